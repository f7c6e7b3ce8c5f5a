// 3D objects of the simulator, in the text form OBJ8: what the headless simulator draws of one, as plain
// data.
//
// Kept: vertices, triangles, textures, animation, gloss, and the attributes for culling, drawing and level of
// detail. Known and left out, since nothing here shows them: lines, lights, materials, manipulators, sounds,
// particles. Lines that are unknown are skipped too.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simhost {

// Metres, x right, y up, z aft; (s, t) = (0, 0) is the lower left of the picture.
struct ObjectVertex {
    float position[3];
    float normal[3];
    float texture[2];
};

// Where a value lies, and what happens there.
struct AnimationKey {
    float value;
    float move[3]; // metres, of a translation
    float degrees; // of a rotation
};

enum class ObjectCommandKind {
    Triangles, // indices first to first + count - 1
    AnimationBegin,
    AnimationEnd,
    Translate, // keys first to first + count - 1, ascending by value
    Rotate,    // the same, about axis
    Show,      // while low <= value <= high
    Hide,
    Culling, // isOn: back faces are not drawn
    Drawing, // isOn: triangles are drawn
    Detail   // what follows is drawn from low up to high metres away
};

struct ObjectCommand {
    ObjectCommandKind kind;
    int line = 0; // of the file
    int first = 0, count = 0;
    float axis[3] = {};
    int dataref = -1; // place in ObjectFile::datarefs; -1: the value is 0
    float loop = 0;   // the value starts again from 0 there; 0: it does not
    float low = 0, high = 0;
    bool isOn = false;
};

struct ObjectFile {
    std::string path;
    std::string texture, litTexture, normalTexture; // names beside the object; "" without one
    bool hasMetalness = false;                      // the normal map's blue says what is metal
    float specular = 0.3F;                          // how much of the gloss counts, 0 to 1
    std::vector<ObjectVertex> vertices;
    std::vector<int> indices; // those that Triangles use are places in vertices
    std::vector<AnimationKey> keys;
    std::vector<std::string> datarefs;   // each once, as written: "name" or "name[3]"
    std::vector<ObjectCommand> commands; // AnimationBegin and AnimationEnd are balanced
    std::vector<std::string> problems;   // "path:line: what", of lines that were left out
};

// Reads an object's text, whatever its line ends. A line that cannot be understood is left out and named in
// problems, as are commands that use vertices or indices that do not exist. False, with the reason as the
// last of the problems, when it is no OBJ8 text at all. path is used for problems only.
bool ReadObject(std::string_view text, const std::string &path, ObjectFile &object);

// The same from a file.
bool ReadObjectFile(const std::string &path, ObjectFile &object);

} // namespace simhost
