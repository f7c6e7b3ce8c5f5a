// The table of datarefs that the plug-in publishes, and small helpers on datarefs of others.
//
// Every published value is owned by one entry of DRFs, whose address is the accessors' refcon: entries are
// never moved, reused or freed before the plug-in stops.
#pragma once

#include <string>

#include "XPLMDataAccess.h"

// One published dataref. Only the member of its type is used.
class DRFclass {
public:
    float floatValue = 0.0F;
    int intValue = 0;
    std::string stringValue;
    XPLMDataRef handle = nullptr; // null: not registered

    // Register the accessors under the name and keep the handle.
    XPLMDataRef Create_i(const std::string &name);
    XPLMDataRef Create_f(const std::string &name);
    XPLMDataRef Create_s(const std::string &name);
    void Unregister();
};

const int DrfCapacity = 1000;
extern DRFclass DRFs[DrfCapacity]; // slot 0 is never used
extern int DRFcounter;             // the slot used last

// Publish a writable dataref and tell the dataref browser, if it is loaded. Null, with one line in the log,
// when the name exists already or the table is full; writes through a null handle do nothing.
XPLMDataRef CreateDrf_Int(const std::string &name, int initial);
XPLMDataRef CreateDrf_Float(const std::string &name, float initial);
XPLMDataRef CreateDrf_String(const std::string &name, const std::string &initial);

// Publish a number that is read only: get makes it of the refcon, which must outlive it. Takes no entry of
// the table; else as above.
XPLMDataRef CreateDrf_Computed(const std::string &name, float (*get)(void *), void *refcon);

// The entry of a dataref that is published here; null for any other, and for one that was taken back.
DRFclass *OwnDataref(XPLMDataRef handle);

// Takes every published dataref back; a second call does nothing.
void UnregisterDrfs();

// One element of an array dataref of the simulator, among its first 8; 0, or no write, for any other index.
float GetDRFf(XPLMDataRef handle, int index);
void SetDRFf(XPLMDataRef handle, int index, float value);
int GetDRFi(XPLMDataRef handle, int index);
void SetDRFi(XPLMDataRef handle, int index, int value);

// One element of any array dataref among its first 16, which is what systems files and set actions reach.
// Writing transfers those 16 as a whole. 0, or no write, for any other index.
const int ReachableElements = 16;
inline bool isReachableElement(int index) {
    return index >= 0 && index < ReachableElements;
}
float GetElementf(XPLMDataRef handle, int index);
void SetElementf(XPLMDataRef handle, int index, float value);
int GetElementi(XPLMDataRef handle, int index);
void SetElementi(XPLMDataRef handle, int index, int value);

// The text of a byte dataref up to its first zero byte; empty for a null handle.
std::string GetDRFs(XPLMDataRef handle);

// Everything as when the program starts.
void ResetPublishedDatarefs();
