// Draws objects with OpenGL: textured, lit from outside and a little from the eye, with their normal maps.
// What an object needs on the graphics card is made when it is first drawn.
#pragma once

#include <string>
#include <vector>

#include "simhost/drawing/object_animation.h"
#include "simhost/drawing/object_file.h"

namespace simhost {

struct Dataref;

// A picture of its own for an object that has none in a file: RGBA, rows from the bottom.
struct ObjectPicture {
    int width = 0, height = 0;
    std::vector<unsigned char> pixels;
};

struct DrawnObject {
    ObjectFile file;
    Matrix place = UnitMatrix; // from the object's coordinates to the scene's
    ObjectPicture picture;     // used instead of the file's texture unless empty

    // object_drawing.cpp's own.
    struct Element {
        Dataref *dataref;
        int index;
    };
    std::vector<Element> datarefs; // one for each of the file
    std::vector<double> values;
    bool isLoaded = false;
    unsigned vertexBuffer = 0, indexBuffer = 0, texture = 0, normalTexture = 0;
};

struct Camera {
    float eye[3];
    float target[3];
    float degreesHigh; // of the picture
};

// To be called with a DrawnObject whose file has been read: looks up its datarefs.
void BindDatarefs(DrawnObject &object);

// Reads the datarefs, for the next time it is drawn.
void ReadDatarefs(DrawnObject &object);

// Draws objects onto the bound surface, whose size is given. Whatever cannot be loaded for them is told once
// on stderr.
void DrawObjects(std::vector<DrawnObject> &objects, const Camera &camera, int width, int height);

// Frees what lies on the graphics card.
void UnloadObject(DrawnObject &object);

// Where a direction as far away as the horizon, ahead of the camera, lies in the picture: 0 is the lower
// edge, 1 the upper.
float HorizonHeight(const Camera &camera);

} // namespace simhost
