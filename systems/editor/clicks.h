// What a click on a zone of the systems editor does.
#pragma once

#include "systems/editor/zones.h"

void ClickZone(const click_zone_class &zone, bool isDouble);
