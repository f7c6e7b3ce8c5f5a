// The panels of the systems editor's window, each drawn into its area with its zones.
#pragma once

#include "systems/editor/zones.h"

const int GraphValues = 240;

// The value of the selected parameter over the last seconds.
struct ValueGraph {
    double now = 0.0;
    double value[GraphValues] = {};
    int count = 0, next = 0; // a ring
    double lastTime = -1.0;
    ParameterAddress place;
};

struct PanelsState {
    // Left edges of the three columns of the table and of the panels right of it.
    int systems = 0, devices = 0, parameters = 0, details = 0, logic = 0, calculations = 0;
    int firstRow = 0; // of the table: how far it is below the screen's upper edge
    ValueGraph graph;
};
extern PanelsState panelsState;
inline int &ColumnX_Sys = panelsState.systems, &ColumnX_DevPb = panelsState.devices;
inline int &ColumnX_Out = panelsState.parameters, &ColumnX_Par = panelsState.details;
inline int &ColumnX_Logic = panelsState.logic, &ColumnX_Calc = panelsState.calculations;
inline int &offsetY = panelsState.firstRow;
inline double &actualGraphValue = panelsState.graph.now;

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

// Takes the value of the selected parameter into the graph; to be called once a frame.
void TakeGraphValue();

// A zone of an action on the selected block, or on a record of it.
click_zone_class Zone(int action, const char *name = "");

// A field that is edited on a double click. place's indices and the field are the zone's.
void DrawField(const Area &area, int field, int item, int element, int C, std::string_view text);
