// Reads OBJ8 line by line; what a line may only say in view of the whole (counts, indices, nesting) is
// checked at the end, so that nobody who uses the result has to.
#include "simhost/drawing/object_file.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "simhost/number_text.h"

namespace simhost {

namespace {

// A broken file would otherwise fill the log.
constexpr std::size_t MostProblems = 20;

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

struct Reader {
    ObjectFile &object;
    std::string_view rest; // of the text
    int line = 0;
    std::string_view words = {}; // what is left of the line
    int openAnimation = -1;      // the Translate or Rotate whose keys follow
    int pointCounts[4] = {-1, -1, -1, -1};

    void Report(int where, const std::string &what) {
        if (object.problems.size() < MostProblems)
            object.problems.push_back(object.path + ":" + std::to_string(where) + ": " + what);
        else if (object.problems.size() == MostProblems)
            object.problems.push_back(object.path + ": and more");
    }

    // A line may end with a line feed, a carriage return or both.
    bool NextLine() {
        if (rest.empty()) return false;
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        words = rest.substr(0, end);
        words = words.substr(0, words.find('#'));
        const bool isPair = rest.substr(end, 2) == "\r\n";
        rest.remove_prefix(std::min(end + (isPair ? 2 : 1), rest.size()));
        line++;
        return true;
    }

    std::string_view Word() {
        while (!words.empty() && isBlank(words.front())) words.remove_prefix(1);
        std::size_t length = 0;
        while (length < words.size() && !isBlank(words[length])) length++;
        const std::string_view word = words.substr(0, length);
        words.remove_prefix(length);
        return word;
    }

    // All that is left, blanks at both ends aside: file names may contain some.
    std::string_view Remainder() {
        while (!words.empty() && isBlank(words.front())) words.remove_prefix(1);
        while (!words.empty() && isBlank(words.back())) words.remove_suffix(1);
        return words;
    }

    template <typename Number> bool Read(Number &number) {
        std::string_view word = Word();
        if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
        Number read = 0;
        if (!ReadWholeNumber(word, read) || !std::isfinite(static_cast<float>(read))) return false;
        number = read;
        return true;
    }

    template <typename Number> bool Read(Number *numbers, int count) {
        for (int i = 0; i < count; i++)
            if (!Read(numbers[i])) return false;
        return true;
    }

    ObjectCommand &Add(ObjectCommandKind kind) {
        object.commands.push_back({.kind = kind, .line = line});
        return object.commands.back();
    }

    // -1 for none, which may also be left out.
    int Dataref() {
        const std::string_view name = Word();
        if (name.empty() || name == "none" || name == "null") return -1;
        const auto found = std::find(object.datarefs.begin(), object.datarefs.end(), name);
        const auto place = found - object.datarefs.begin();
        if (found == object.datarefs.end()) object.datarefs.emplace_back(name);
        return static_cast<int>(place);
    }
};

// ---- One function for each kind of line. False: it cannot be understood. ----

bool ReadVertex(Reader &reader) {
    float fields[8] = {};
    const bool isRead = reader.Read(fields, 8);
    ObjectVertex vertex;
    std::copy(fields, fields + 3, vertex.position);
    std::copy(fields + 3, fields + 6, vertex.normal);
    std::copy(fields + 6, fields + 8, vertex.texture);
    reader.object.vertices.push_back(vertex); // a bad one too: those behind it keep their numbers
    return isRead;
}

bool ReadIndices(Reader &reader, int count) {
    bool isRead = true;
    for (int i = 0; i < count; i++) {
        int index = -1;
        isRead = reader.Read(index) && isRead;
        reader.object.indices.push_back(index);
    }
    return isRead;
}

bool ReadTriangles(Reader &reader) {
    ObjectCommand &command = reader.Add(ObjectCommandKind::Triangles);
    if (reader.Read(command.first) && reader.Read(command.count)) return true;
    reader.object.commands.pop_back();
    return false;
}

void CloseKeys(Reader &reader) {
    if (reader.openAnimation < 0) return;
    const ObjectCommand &command = reader.object.commands[static_cast<std::size_t>(reader.openAnimation)];
    std::stable_sort(reader.object.keys.begin() + command.first, reader.object.keys.end(),
                     [](const AnimationKey &a, const AnimationKey &b) { return a.value < b.value; });
    reader.openAnimation = -1;
}

// Keys are in one list, so an animation's own have to follow each other.
ObjectCommand &AddAnimation(Reader &reader, ObjectCommandKind kind) {
    ObjectCommand &command = reader.Add(kind);
    command.first = static_cast<int>(reader.object.keys.size());
    reader.openAnimation = static_cast<int>(reader.object.commands.size()) - 1;
    return command;
}

void AddKey(Reader &reader, ObjectCommand &command, const AnimationKey &key) {
    reader.object.keys.push_back(key);
    command.count++;
}

bool ReadTranslation(Reader &reader) {
    float fields[8];
    if (!reader.Read(fields, 8)) return false;
    ObjectCommand &command = AddAnimation(reader, ObjectCommandKind::Translate);
    AddKey(reader, command, {fields[6], {fields[0], fields[1], fields[2]}, 0});
    AddKey(reader, command, {fields[7], {fields[3], fields[4], fields[5]}, 0});
    command.dataref = reader.Dataref();
    CloseKeys(reader);
    return true;
}

bool ReadRotation(Reader &reader) {
    float fields[7];
    if (!reader.Read(fields, 7)) return false;
    ObjectCommand &command = AddAnimation(reader, ObjectCommandKind::Rotate);
    std::copy(fields, fields + 3, command.axis);
    AddKey(reader, command, {fields[5], {}, fields[3]});
    AddKey(reader, command, {fields[6], {}, fields[4]});
    command.dataref = reader.Dataref();
    CloseKeys(reader);
    return true;
}

bool BeginTranslation(Reader &reader) {
    AddAnimation(reader, ObjectCommandKind::Translate).dataref = reader.Dataref();
    return true;
}

bool BeginRotation(Reader &reader) {
    float axis[3];
    if (!reader.Read(axis, 3)) return false;
    ObjectCommand &command = AddAnimation(reader, ObjectCommandKind::Rotate);
    std::copy(axis, axis + 3, command.axis);
    command.dataref = reader.Dataref();
    return true;
}

bool ReadKey(Reader &reader, ObjectCommandKind kind) {
    if (reader.openAnimation < 0) return false;
    ObjectCommand &command = reader.object.commands[static_cast<std::size_t>(reader.openAnimation)];
    AnimationKey key{};
    if (command.kind != kind || !reader.Read(key.value)) return false;
    const bool isRead =
        kind == ObjectCommandKind::Translate ? reader.Read(key.move, 3) : reader.Read(key.degrees);
    if (isRead) AddKey(reader, command, key);
    return isRead;
}

// Stands among the keys, or behind an animation in its short form.
bool ReadLoop(Reader &reader) {
    if (reader.object.commands.empty()) return false;
    ObjectCommand &command = reader.object.commands.back();
    if (command.kind != ObjectCommandKind::Translate && command.kind != ObjectCommandKind::Rotate)
        return false;
    return reader.Read(command.loop);
}

bool ReadVisibility(Reader &reader, ObjectCommandKind kind) {
    float range[2];
    if (!reader.Read(range, 2)) return false;
    ObjectCommand &command = reader.Add(kind);
    command.low = range[0];
    command.high = range[1];
    command.dataref = reader.Dataref();
    return true;
}

bool ReadDetail(Reader &reader) {
    float range[2];
    if (!reader.Read(range, 2)) return false;
    ObjectCommand &command = reader.Add(ObjectCommandKind::Detail);
    command.low = range[0];
    command.high = range[1];
    return true;
}

bool AddSwitch(Reader &reader, ObjectCommandKind kind, bool isOn) {
    reader.Add(kind).isOn = isOn;
    return true;
}

using Kind = ObjectCommandKind;

struct LineKind {
    std::string_view name;
    bool (*read)(Reader &reader);
};

// The most frequent ones first. What is not here is skipped: LINES, LIGHTS, VLINE, VLIGHT, the other
// GLOBAL_... and ATTR_... and whatever other programs write.
constexpr LineKind LineKinds[] = {
    {"VT", ReadVertex},
    {"IDX10", [](Reader &reader) { return ReadIndices(reader, 10); }},
    {"IDX", [](Reader &reader) { return ReadIndices(reader, 1); }},
    {"TRIS", ReadTriangles},
    {"ANIM_begin", [](Reader &reader) { return AddSwitch(reader, Kind::AnimationBegin, false); }},
    {"ANIM_end", [](Reader &reader) { return AddSwitch(reader, Kind::AnimationEnd, false); }},
    {"ANIM_trans", ReadTranslation},
    {"ANIM_rotate", ReadRotation},
    {"ANIM_trans_begin", BeginTranslation},
    {"ANIM_rotate_begin", BeginRotation},
    {"ANIM_trans_key", [](Reader &reader) { return ReadKey(reader, Kind::Translate); }},
    {"ANIM_rotate_key", [](Reader &reader) { return ReadKey(reader, Kind::Rotate); }},
    {"ANIM_trans_end", [](Reader &) { return true; }}, // the keys are closed by any line but a key
    {"ANIM_rotate_end", [](Reader &) { return true; }},
    {"ANIM_keyframe_loop", ReadLoop},
    {"ANIM_show", [](Reader &reader) { return ReadVisibility(reader, Kind::Show); }},
    {"ANIM_hide", [](Reader &reader) { return ReadVisibility(reader, Kind::Hide); }},
    {"ATTR_cull", [](Reader &reader) { return AddSwitch(reader, Kind::Culling, true); }},
    {"ATTR_no_cull", [](Reader &reader) { return AddSwitch(reader, Kind::Culling, false); }},
    {"ATTR_draw_enable", [](Reader &reader) { return AddSwitch(reader, Kind::Drawing, true); }},
    {"ATTR_draw_disable", [](Reader &reader) { return AddSwitch(reader, Kind::Drawing, false); }},
    {"ATTR_LOD", ReadDetail},
    {"TEXTURE", [](Reader &reader) { return reader.object.texture = reader.Remainder(), true; }},
    {"TEXTURE_LIT", [](Reader &reader) { return reader.object.litTexture = reader.Remainder(), true; }},
    {"TEXTURE_NORMAL", [](Reader &reader) { return reader.object.normalTexture = reader.Remainder(), true; }},
    {"NORMAL_METALNESS", [](Reader &reader) { return reader.object.hasMetalness = true; }},
    {"GLOBAL_specular", [](Reader &reader) { return reader.Read(&reader.object.specular, 1); }},
    {"POINT_COUNTS", [](Reader &reader) { return reader.Read(reader.pointCounts, 4); }}};

void ReadLine(Reader &reader) {
    const std::string_view name = reader.Word();
    for (const LineKind &kind : LineKinds) {
        if (kind.name != name) continue;
        if (!name.ends_with("_key") && name != "ANIM_keyframe_loop") CloseKeys(reader);
        if (!kind.read(reader)) reader.Report(reader.line, "cannot read this " + std::string(name) + " line");
        return;
    }
}

// ---- The whole ----

// "I" or "A", "800", "OBJ"; the first and the second may have words behind them.
bool ReadHeader(Reader &reader) {
    const char *const expected[] = {"\"I\" or \"A\"", "\"800\"", "\"OBJ\""};
    for (int part = 0; part < 3; part++) {
        std::string_view word;
        while (word.empty() && reader.NextLine()) word = reader.Word();
        const bool isRight = part == 0   ? word == "I" || word == "A"
                             : part == 1 ? word == "800"
                                         : word == "OBJ";
        if (isRight) continue;
        reader.Report(std::max(reader.line, 1), std::string("no OBJ8 object: expected ") + expected[part]);
        return false;
    }
    return true;
}

void CheckTriangles(Reader &reader, ObjectCommand &command) {
    const auto &indices = reader.object.indices;
    const int indexCount = static_cast<int>(indices.size());
    const int vertexCount = static_cast<int>(reader.object.vertices.size());
    if (command.first < 0 || command.count < 0 || command.first > indexCount
        || command.count > indexCount - command.first) {
        reader.Report(command.line, "TRIS uses indices that do not exist");
        command.first = command.count = 0;
        return;
    }
    if (command.count % 3 != 0) {
        reader.Report(command.line, "TRIS with a count that is not divisible by 3");
        command.count -= command.count % 3;
    }
    const auto begin = indices.begin() + command.first;
    const auto isWrong = [&](int index) { return index < 0 || index >= vertexCount; };
    if (std::any_of(begin, begin + command.count, isWrong)) {
        reader.Report(command.line, "TRIS uses vertices that do not exist");
        command.first = command.count = 0;
    }
}

void CheckCommands(Reader &reader) {
    std::vector<ObjectCommand> checked;
    std::vector<int> openLines;
    for (ObjectCommand &command : reader.object.commands) {
        if (command.kind == Kind::Triangles) CheckTriangles(reader, command);
        if (command.kind == Kind::AnimationBegin) openLines.push_back(command.line);
        if (command.kind == Kind::AnimationEnd) {
            if (openLines.empty()) {
                reader.Report(command.line, "ANIM_end without ANIM_begin");
                continue;
            }
            openLines.pop_back();
        }
        checked.push_back(command);
    }
    for (; !openLines.empty(); openLines.pop_back()) {
        reader.Report(openLines.back(), "ANIM_begin without ANIM_end");
        checked.push_back({.kind = Kind::AnimationEnd, .line = reader.line});
    }
    reader.object.commands = std::move(checked);
}

void CheckPointCounts(Reader &reader) {
    const auto isWrong = [](int told, std::size_t count) {
        return told >= 0 && static_cast<std::size_t>(told) != count;
    };
    const ObjectFile &object = reader.object;
    if (isWrong(reader.pointCounts[0], object.vertices.size()))
        reader.Report(reader.line,
                      "POINT_COUNTS is wrong: " + std::to_string(object.vertices.size()) + " vertices");
    if (isWrong(reader.pointCounts[3], object.indices.size()))
        reader.Report(reader.line,
                      "POINT_COUNTS is wrong: " + std::to_string(object.indices.size()) + " indices");
}

} // namespace

bool ReadObject(std::string_view text, const std::string &path, ObjectFile &object) {
    object = {};
    object.path = path;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    Reader reader{.object = object, .rest = text};
    if (!ReadHeader(reader)) return false;
    while (reader.NextLine()) ReadLine(reader);
    CloseKeys(reader);
    CheckCommands(reader);
    CheckPointCounts(reader);
    return true;
}

bool ReadObjectFile(const std::string &path, ObjectFile &object) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf(); // unlike iterators, does not throw when it is a folder
    if (!file.is_open()) {
        object = {};
        object.path = path;
        object.problems.push_back(path + ": cannot be read");
        return false;
    }
    return ReadObject(text.str(), path, object);
}

} // namespace simhost
