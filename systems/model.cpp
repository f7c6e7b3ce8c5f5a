// The model's globals and its end.
#include "systems/model.h"

#include "systems/editor/window.h"
#include "systems/program.h"
#include "systems/saved_values.h"
#include "util/make_fresh.h"

std::vector<system_class> systems_vector;
NameIndex mapSystemName;
KeptBeforeSystems keptBeforeSystems;
int isSeparateSysSaving = -1;

void DeleteSystems() {
    SaveParametersValue();
    for (system_class &system : systems_vector) {
        for (device_struct &device : system.devices) {
            for (out_parameter_struct &parameter : device.outs) {
                parameter.inDataref.Unregister();
                parameter.outDataref.Unregister();
            }
        }
    }
    ModelChanges();
    systems_vector.clear();
    mapSystemName.clear();
    keptBeforeSystems = {};
    SysWindowDestroy();
}

void ResetModel() {
    ModelChanges();
    MakeFresh(systems_vector, mapSystemName, keptBeforeSystems);
    isSeparateSysSaving = -1;
}
