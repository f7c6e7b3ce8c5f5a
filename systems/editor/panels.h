// The panels of the systems editor's window, each drawn into its area with its zones.
#pragma once

#include "systems/editor/zones.h"

// Left edges of the three columns of the table and of the panels right of it, and how far the table's first
// row is below the screen's upper edge.
extern int ColumnX_Sys, ColumnX_DevPb, ColumnX_Out, ColumnX_Par, ColumnX_Logic, ColumnX_Calc;
extern int offsetY;

void DrawTitle(const Area &area);
void DrawTable(const Area &area); // systems, devices, parameters
void DrawUsage(const Area &area);
void DrawValueGraph(const Area &area);
void DrawDetails(const Area &area);
void DrawLogicStack(const Area &area);
void DrawCalculationStack(const Area &area);
void DrawLimitsAndGraph(const Area &area);
void DrawExecuteStack(const Area &area);

// How high the details are.
const int DetailsHeight = 10 * (RowHeight + 2);

// The value of the selected parameter over the last seconds, taken once a frame.
extern double actualGraphValue;
void TakeGraphValue();

// A zone of an action on the selected block, or on a record of it.
click_zone_class Zone(int action, const char *name = "");

// A field that is edited on a double click. place's indices and the field are the zone's.
void DrawField(const Area &area, int field, int item, int element, int C, std::string_view text);
