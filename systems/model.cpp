#include "systems/model.h"

ModelState modelState;
