// One shader for all. Triangles are drawn in the file's order, as the simulator does, so that transparent
// ones lie over what comes before them.
#include "simhost/drawing/object_drawing.h"

#include <lodepng.h>

#include <cmath>
#include <cstddef>
#include <cstdio>

#include "simhost/drawing/gl_context.h"
#include "simhost/interface/datarefs.h"

namespace simhost {

namespace {

// ---- The shader ----

enum Attribute : GLuint { PositionAttribute, NormalAttribute, TextureAttribute };

constexpr const char *VertexShader = R"(#version 120
attribute vec3 position, normal;
attribute vec2 texturePoint;
uniform mat4 place, view;
varying vec3 point, outward;
varying vec2 st;
void main() {
    vec4 placed = place * vec4(position, 1.0);
    point = placed.xyz;
    outward = mat3(place) * normal;
    st = texturePoint;
    gl_Position = view * placed;
})";

// The directions of s and t on the surface come from how they change from pixel to pixel, since OBJ8 has no
// tangents. A normal map holds x and y in red and green, gloss in alpha, and perhaps metal in blue: what is
// glossy has a small and bright highlight, and that of metal has the metal's colour.
constexpr const char *FragmentShader = R"(#version 120
uniform sampler2D picture, normalMap;
uniform bool hasNormalMap, hasMetalness;
uniform float specular;
uniform vec3 eye;
varying vec3 point, outward;
varying vec2 st;
vec3 bumped(vec3 n) {
    vec3 dx = dFdx(point), dy = dFdy(point);
    vec2 sx = dFdx(st), sy = dFdy(st);
    vec3 alongS = cross(dy, n) * sx.x + cross(n, dx) * sy.x;
    vec3 alongT = cross(dy, n) * sx.y + cross(n, dx) * sy.y;
    float longest = max(dot(alongS, alongS), dot(alongT, alongT));
    if (longest <= 0.0) return n;
    vec2 xy = texture2D(normalMap, st).xy * 2.0 - 1.0;
    float z = sqrt(max(1.0 - dot(xy, xy), 0.0));
    return normalize((alongS * xy.x + alongT * xy.y) * inversesqrt(longest) + n * z);
}
void main() {
    vec4 colour = texture2D(picture, st);
    vec3 n = normalize(outward) * (gl_FrontFacing ? 1.0 : -1.0);
    if (hasNormalMap) n = bumped(n);
    vec3 toEye = normalize(eye - point);
    vec3 toSun = normalize(vec3(-0.25, 0.70, -0.70)); // through the windscreen
    vec3 light = mix(vec3(0.25, 0.24, 0.22), vec3(0.37, 0.40, 0.44), 0.5 + 0.5 * n.y);
    light += vec3(0.50, 0.47, 0.43) * max((dot(n, toSun) + 0.35) / 1.35, 0.0); // softened by the windows
    light += vec3(0.20) * max(dot(n, toEye), 0.0);
    vec2 finish = hasNormalMap ? texture2D(normalMap, st).ba : vec2(0.0, 0.4);
    if (!hasMetalness) finish.x = 0.0;
    float gloss = finish.y * finish.y * specular * specular;
    float shine = pow(max(dot(n, normalize(toSun + toEye)), 0.0), 6.0 + 100.0 * gloss) * (0.02 + 0.3 * gloss);
    vec3 tint = mix(vec3(1.0), colour.rgb * 3.0, finish.x);
    gl_FragColor = vec4(colour.rgb * light * (1.0 - 0.35 * finish.x) + tint * shine, colour.a);
})";

struct Program {
    GLuint name = 0;
    GLint place = -1, view = -1, eye = -1, hasNormalMap = -1, hasMetalness = -1, specular = -1;
};

GLuint CompileShader(GLenum kind, const char *source) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
}

Program MakeProgram() {
    Program made;
    made.name = glCreateProgram();
    for (const auto &[kind, source] :
         {std::pair{GL_VERTEX_SHADER, VertexShader}, {GL_FRAGMENT_SHADER, FragmentShader}}) {
        const GLuint shader = CompileShader(static_cast<GLenum>(kind), source);
        glAttachShader(made.name, shader);
        glDeleteShader(shader); // with the program
    }
    glBindAttribLocation(made.name, PositionAttribute, "position");
    glBindAttribLocation(made.name, NormalAttribute, "normal");
    glBindAttribLocation(made.name, TextureAttribute, "texturePoint");
    glLinkProgram(made.name);
    GLint isLinked = GL_FALSE;
    glGetProgramiv(made.name, GL_LINK_STATUS, &isLinked);
    if (isLinked == GL_FALSE) {
        char why[1000] = "";
        glGetProgramInfoLog(made.name, sizeof why, nullptr, why);
        std::fprintf(stderr, "fennic-sim: objects cannot be drawn: %s\n", why);
        made.name = 0;
        return made;
    }
    made.place = glGetUniformLocation(made.name, "place");
    made.view = glGetUniformLocation(made.name, "view");
    made.eye = glGetUniformLocation(made.name, "eye");
    made.hasNormalMap = glGetUniformLocation(made.name, "hasNormalMap");
    made.hasMetalness = glGetUniformLocation(made.name, "hasMetalness");
    made.specular = glGetUniformLocation(made.name, "specular");
    glUseProgram(made.name);
    glUniform1i(glGetUniformLocation(made.name, "picture"), 0);
    glUniform1i(glGetUniformLocation(made.name, "normalMap"), 1);
    return made;
}

// ---- What lies on the graphics card ----

GLuint MakeTexture(const ObjectPicture &picture) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, picture.width, picture.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 picture.pixels.data());
    glGenerateMipmap(GL_TEXTURE_2D);
    return texture;
}

// 0 when there is none to be read.
GLuint LoadTexture(const ObjectFile &file, const std::string &name) {
    if (name.empty()) return 0;
    const std::string path = file.path.substr(0, file.path.rfind('/') + 1) + name;
    unsigned width = 0, height = 0;
    std::vector<unsigned char> rows;
    const unsigned failed = lodepng::decode(rows, width, height, path);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (failed != 0 || width > static_cast<unsigned>(largest) || height > static_cast<unsigned>(largest)) {
        std::fprintf(stderr, "fennic-sim: %s: no texture: %s\n", path.c_str(),
                     failed != 0 ? lodepng_error_text(failed) : "it is too large");
        return 0;
    }
    ObjectPicture picture{static_cast<int>(width), static_cast<int>(height), {}};
    const std::size_t rowBytes = std::size_t{width} * 4;
    picture.pixels.reserve(rows.size());
    for (std::size_t row = height; row-- > 0;) {
        const unsigned char *begin = rows.data() + row * rowBytes;
        picture.pixels.insert(picture.pixels.end(), begin, begin + rowBytes);
    }
    return MakeTexture(picture);
}

void LoadObject(DrawnObject &object) {
    object.isLoaded = true;
    const ObjectFile &file = object.file;
    glGenBuffers(1, &object.vertexBuffer);
    glBindBuffer(GL_ARRAY_BUFFER, object.vertexBuffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(file.vertices.size() * sizeof(ObjectVertex)),
                 file.vertices.data(), GL_STATIC_DRAW);
    glGenBuffers(1, &object.indexBuffer);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, object.indexBuffer);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(file.indices.size() * sizeof(int)),
                 file.indices.data(), GL_STATIC_DRAW);
    glActiveTexture(GL_TEXTURE0);
    object.texture =
        object.picture.pixels.empty() ? LoadTexture(file, file.texture) : MakeTexture(object.picture);
    if (object.texture == 0) object.texture = MakeTexture({1, 1, {200, 200, 200, 255}});
    object.normalTexture = LoadTexture(file, file.normalTexture);
}

// ---- Drawing ----

struct Direction {
    float x, y, z;
};

Direction Normalized(const Direction &v) {
    const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return {v.x / length, v.y / length, v.z / length};
}

Direction Cross(const Direction &a, const Direction &b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Direction Ahead(const Camera &camera) {
    return Normalized({camera.target[0] - camera.eye[0], camera.target[1] - camera.eye[1],
                       camera.target[2] - camera.eye[2]});
}

float HalfHeight(const Camera &camera) {
    return std::tan(camera.degreesHigh * 3.14159265F / 360);
}

Matrix ViewMatrix(const Camera &camera, float aspect) {
    constexpr float nearest = 0.05F, farthest = 200;
    const Direction ahead = Ahead(camera), right = Normalized(Cross(ahead, {0, 1, 0}));
    const Direction up = Cross(right, ahead);
    const Matrix turned = {right.x, up.x, -ahead.x, 0, right.y, up.y, -ahead.y, 0,
                           right.z, up.z, -ahead.z, 0, 0,       0,    0,        1};
    const float scale = 1 / HalfHeight(camera), depth = nearest - farthest;
    const Matrix projection = {scale / aspect,
                               0,
                               0,
                               0,
                               0,
                               scale,
                               0,
                               0,
                               0,
                               0,
                               (nearest + farthest) / depth,
                               -1,
                               0,
                               0,
                               2 * nearest * farthest / depth,
                               0};
    return projection * turned * Translation(-camera.eye[0], -camera.eye[1], -camera.eye[2]);
}

// OpenGL takes the distance from a buffer's beginning as a pointer.
const void *InBuffer(std::size_t bytes) {
    return reinterpret_cast<const void *>(bytes); // NOLINT(performance-no-int-to-ptr)
}

void PointAt(Attribute attribute, int size, std::size_t offset) {
    glEnableVertexAttribArray(attribute);
    glVertexAttribPointer(attribute, size, GL_FLOAT, GL_FALSE, sizeof(ObjectVertex), InBuffer(offset));
}

float Distance(const DrawnObject &object, const Camera &camera) {
    return std::hypot(object.place[12] - camera.eye[0], object.place[13] - camera.eye[1],
                      object.place[14] - camera.eye[2]);
}

void DrawObject(DrawnObject &object, const Program &program, const Camera &camera) {
    static std::vector<PosedTriangles> posed; // kept for its memory
    PoseObject(object.file, object.values, Distance(object, camera), posed);

    glBindBuffer(GL_ARRAY_BUFFER, object.vertexBuffer);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, object.indexBuffer);
    PointAt(PositionAttribute, 3, offsetof(ObjectVertex, position));
    PointAt(NormalAttribute, 3, offsetof(ObjectVertex, normal));
    PointAt(TextureAttribute, 2, offsetof(ObjectVertex, texture));
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, object.normalTexture);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, object.texture);
    glUniform1i(program.hasNormalMap, object.normalTexture != 0 ? 1 : 0);
    glUniform1i(program.hasMetalness, object.file.hasMetalness ? 1 : 0);
    glUniform1f(program.specular, object.file.specular);
    for (const PosedTriangles &triangles : posed) {
        const Matrix place = object.place * triangles.place;
        glUniformMatrix4fv(program.place, 1, GL_FALSE, place.data());
        if (triangles.isCulled)
            glEnable(GL_CULL_FACE);
        else
            glDisable(GL_CULL_FACE);
        glDrawElements(GL_TRIANGLES, triangles.count, GL_UNSIGNED_INT,
                       InBuffer(static_cast<std::size_t>(triangles.first) * sizeof(int)));
    }
}

// "name[3]": the name, and the index.
int TakeIndex(std::string &name) {
    const std::size_t bracket = name.find('[');
    if (bracket == std::string::npos || name.back() != ']') return 0;
    int index = 0;
    for (std::size_t i = bracket + 1; i + 1 < name.size(); i++) {
        if (name[i] < '0' || name[i] > '9' || index > 1000000) return -1;
        index = index * 10 + (name[i] - '0');
    }
    name.resize(bracket);
    return index;
}

} // namespace

void BindDatarefs(DrawnObject &object) {
    object.datarefs.clear();
    for (std::string name : object.file.datarefs) {
        const int index = TakeIndex(name);
        object.datarefs.push_back({&RecordOf(name), index});
    }
}

void ReadDatarefs(DrawnObject &object) {
    object.values.clear();
    for (const DrawnObject::Element &element : object.datarefs)
        object.values.push_back(NumberIn(*element.dataref, element.index));
}

void DrawObjects(std::vector<DrawnObject> &objects, const Camera &camera, int width, int height) {
    static const Program program = MakeProgram();
    if (program.name == 0 || height <= 0) return;
    for (DrawnObject &object : objects)
        if (!object.isLoaded) LoadObject(object);
    glUseProgram(program.name);
    const Matrix view = ViewMatrix(camera, static_cast<float>(width) / static_cast<float>(height));
    glUniformMatrix4fv(program.view, 1, GL_FALSE, view.data());
    glUniform3fv(program.eye, 1, camera.eye);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_TRUE);
    glFrontFace(GL_CW);
    for (DrawnObject &object : objects) DrawObject(object, program, camera);
}

void UnloadObject(DrawnObject &object) {
    if (!object.isLoaded) return;
    glDeleteBuffers(1, &object.vertexBuffer);
    glDeleteBuffers(1, &object.indexBuffer);
    glDeleteTextures(1, &object.texture);
    glDeleteTextures(1, &object.normalTexture);
    object.isLoaded = false;
}

float HorizonHeight(const Camera &camera) {
    const Direction ahead = Ahead(camera);
    const float slope = ahead.y / std::hypot(ahead.x, ahead.z);
    return 0.5F - slope / HalfHeight(camera) / 2;
}

} // namespace simhost
