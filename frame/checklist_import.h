// The checklists that the aircraft brings with it for others to read, offered to the pilot of an aircraft for
// which nobody has written any for her.
#pragma once

// True when the aircraft's folder holds a clist.txt and no system "CHECKLIST" is loaded.
bool isChecklistImportOffered();

// Makes systems files of it, which are read at the next start. Says how it went, and logs line by line what
// could not be taken over.
void ImportChecklist();
