// Steps of editing, and taking them back.
//
// A step is all that one click changes. What changes the model opens an EditStep and leaves, before each
// change, the opposite of it with OnUndo; undoing a step runs these from the last to the first. At the end of
// a step links are resolved again and the program is compiled afresh before the next frame.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <vector>

#include "systems/model.h"

class EditStep {
public:
    explicit EditStep(const char *name); // a static text, for the screen
    ~EditStep();
    EditStep(const EditStep &) = delete;
    EditStep &operator=(const EditStep &) = delete;
};

// bytes: about how much memory the opposite keeps.
void OnUndo(std::function<void()> opposite, size_t bytes);

// Have the record, which must be there, come back as it is now, apart from its live values. In a step that
// changes no name and no flag, but only what parameters hold, the links of all others need not be resolved
// again.
void KeepParameter(const ParameterAddress &place);
void KeepNamedParameter(const ParameterAddress &place); // its name or flag will change
void KeepDeviceHead(const ParameterAddress &place);     // name and flags, not the parameters
void KeepSystemHead(const ParameterAddress &place);

// Have the texts come back of all links for which willChange is true.
void KeepLinkTexts(const std::function<bool(const sysLink_struct &)> &willChange);

// Takes the last step back. Its name, or null when there is none.
const char *UndoEditStep();

// At least the last 100 steps are kept, and all others while they fit into 32 MB together.
const size_t FewestUndoSteps = 100;
const size_t UndoMemory = 32 << 20; // bytes
size_t CountUndoSteps();
size_t UndoBytes();
void ForgetUndo(); // the steps

// What one click changed, and how it comes back.
struct UndoStep {
    const char *name;
    std::vector<std::function<void()>> opposites;
    size_t bytes = 0;
    bool changesTree = false;
    std::vector<ParameterAddress> parameters; // that are changed
};

struct UndoState {
    std::deque<UndoStep> steps;
    size_t bytes = 0;  // of all steps
    int openSteps = 0; // a step within a step is part of it
    // Counts the changes of the model, undone ones too: what was collected from it is stale when it grew.
    unsigned changeCount = 0;
    void (*afterEdit)() = nullptr; // called after each step and each undoing, when set
};
extern UndoState undoState;
inline unsigned &modelChangeCount = undoState.changeCount;
inline void (*&afterEdit)() = undoState.afterEdit;

// Binds a dataref of a parameter anew, taking back one that was published. mode as in dataref_class.
void BindDataref(dataref_class &dataref, const std::string &fullName, int mode, int type, double initial);
int BindingType(const out_parameter_struct &parameter);
