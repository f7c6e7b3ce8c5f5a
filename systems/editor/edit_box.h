// The one-line edit box that opens over a field of the systems editor: a text field of the simulator.
#pragma once

#include <string>

#include "XPWidgetDefs.h"
#include "systems/editor/canvas.h"
#include "systems/editor/fields.h"

// Opens the box with the field's text over its area; a box that is open is closed.
void EditWidgetCreate(const FieldPlace &field, const Area &area);
void EditWidgetDestroy();
bool isEditWidgetOpen();

// To be called when the screen's size has changed: the box stays where all of it is seen.
void KeepEditWidgetOnScreen();

// The box's callback: return stores the text in the field, escape leaves it as it was. What is refused stays
// in the box, with the reason.
int EditWidgetHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);

// Stores what was typed, as return does. False when it was refused.
bool EditWidgetStore();

// Draws the reason of a refusal beside the box; to be called last in a drawing. Destroys a box that is done.
void DrawEditWidget();
