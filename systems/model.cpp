// The model's globals and its end, which is also that of what was read, written and begun for it.
#include "systems/model.h"

#include "systems/body_parser.h"
#include "systems/checklists.h"
#include "systems/expectations.h"
#include "systems/links.h"
#include "systems/program.h"
#include "systems/reader.h"
#include "systems/saved_values.h"
#include "systems/writer.h"
#include "util/make_fresh.h"
#include "voice/action_queue.h"
#include "voice/recognition.h"

std::vector<system_class> systems_vector;
NameIndex mapSystemName;
KeptBeforeSystems keptBeforeSystems;
int isSeparateSysSaving = -1;

void DeleteSystems() {
    SaveParametersValue();
    ForgetModel();
}

void ForgetModel() {
    for (system_class &system : systems_vector) {
        for (device_struct &device : system.devices) {
            for (out_parameter_struct &parameter : device.outs) {
                parameter.inDataref.Unregister();
                parameter.outDataref.Unregister();
            }
        }
    }
    ModelChanges();
    MakeFresh(systems_vector, mapSystemName, keptBeforeSystems);
    isSeparateSysSaving = -1;
    ForgetSavedValues();
    ResetReader();
    ResetBodyParser();
    ResetLinks();
    ResetExpectations();
    ResetChecklists();
    ResetWriter();
    ResetActionQueue();
    ResetRecognition();
}
