// Files that come with the plug-in and that its user may change: systems, positions, presets, the list of
// aircraft. A package has them in "shipped/", and never where they are read. At each start they are put in
// their places; what the user has changed or deleted stays as he left it.
#pragma once

// Before anything is read. For each file in "shipped/": where there is none it is put in place, unless one
// was put there before, which the user has deleted; where there is one as it was shipped, now or in an
// earlier version, it is replaced; where there is another, that is the user's: it stays, and the new one is
// put beside it once, with "..new" behind its name, which no reader takes for a file of its own. Without
// "shipped/" nothing happens. What fails is logged, and tried again at the next start.
void PutShippedFilesInPlace();

// How many new files lie beside the user's own.
int CountFilesBeside();
