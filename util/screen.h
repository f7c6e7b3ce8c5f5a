// Places and sizes on the screen, in boxels. What comes from the simulator is brought to what any screen
// can be, so that sums and products of places fit their type.
#pragma once

const int FarthestBoxel = 100000;

// The nearest place not farther than FarthestBoxel from 0.
int PlaceOnScreen(int boxel);

// The main window's size; a side that is less than nothing is 0.
void ReadScreenSize(int &width, int &height);
