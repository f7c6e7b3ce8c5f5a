// Each module forgets its own.
#include "systems/model_end.h"

#include "systems/body_parser.h"
#include "systems/checklists.h"
#include "systems/expectations.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/program.h"
#include "systems/reader.h"
#include "systems/saved_values.h"
#include "systems/writer.h"
#include "util/make_fresh.h"
#include "voice/action_queue.h"
#include "voice/recognition.h"

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
    MakeFresh(modelState);
    ForgetSavedValues();
    ResetReader();
    ResetBodyParser();
    ForgetCopies();
    ResetExpectations();
    ResetChecklists();
    ResetWriter();
    ResetActionQueue();
    ResetRecognition();
}
