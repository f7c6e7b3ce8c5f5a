// Circles of links: the strongly connected components of the graph of parameters, by Tarjan's algorithm
// (Depth-first search and linear graph algorithms, SIAM Journal on Computing 1, 1972), without recursion,
// since a chain of links may be as long as the model.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "systems/links.h"
#include "util/numbers.h"

namespace simhost {

namespace {

constexpr int Unseen = -1;

struct Node {
    ParameterPlace place;
    std::vector<int> reads; // nodes whose values it reads
    int order = Unseen;     // of discovery
    int lowest = 0;         // the earliest node that can be reached from here
    bool isOnStack = false;
    size_t nextRead = 0;
};

std::vector<Node> nodes;

void CollectNodes() {
    std::map<ParameterAddress, int> numbers;
    ForEachAddress(
        [&](const ParameterAddress &address) { numbers.emplace(address, static_cast<int>(numbers.size())); });
    ForEachParameter([](const ParameterPlace &place) { nodes.push_back({.place = place, .reads = {}}); });
    for (size_t i = 0; i < nodes.size(); i++) {
        ForEachOperandOf(nodes[i].place.parameter, [&](const sysLink_struct &link) {
            const auto found = numbers.find(link);
            if (found != numbers.end() && found->second != static_cast<int>(i))
                nodes[i].reads.push_back(found->second);
        });
    }
}

// The members of a circle stand in the order of the files, so the first is computed first and reads what
// the others were in the frame before.
void ReportCircle(std::vector<int> members) {
    std::sort(members.begin(), members.end());
    constexpr size_t shown = 4;
    std::string names;
    for (size_t i = 1; i < std::min(members.size(), shown + 1); i++)
        names += (i > 1 ? ", " : "") + nodes[static_cast<size_t>(members[i])].place.Name();
    if (members.size() > shown + 1)
        names += " and " + int2string(static_cast<int>(members.size() - shown - 1)) + " more";
    const ParameterPlace &place = nodes[static_cast<size_t>(members[0])].place;
    AddFinding(Severity::Note, place.parameter.fileName, place.parameter.line,
               place.Name() + " depends on itself through " + names
                   + "; the order of the files decides whose value is a frame old");
}

void FindCirclesFrom(int start) {
    static int discovered = 0;
    static std::vector<int> stack; // nodes whose circle is not known yet
    std::vector<int> path;         // the depth-first search's
    const auto discover = [&](int number) {
        Node &node = nodes[static_cast<size_t>(number)];
        node.order = node.lowest = discovered++;
        node.isOnStack = true;
        stack.push_back(number);
        path.push_back(number);
    };
    discover(start);
    while (!path.empty()) {
        const int number = path.back();
        Node &node = nodes[static_cast<size_t>(number)];
        if (node.nextRead < node.reads.size()) {
            const int other = node.reads[node.nextRead++];
            Node &read = nodes[static_cast<size_t>(other)];
            if (read.order == Unseen)
                discover(other);
            else if (read.isOnStack)
                node.lowest = std::min(node.lowest, read.order);
            continue;
        }
        path.pop_back();
        if (!path.empty()) {
            Node &parent = nodes[static_cast<size_t>(path.back())];
            parent.lowest = std::min(parent.lowest, node.lowest);
        }
        if (node.lowest != node.order) continue;
        std::vector<int> circle;
        do {
            circle.push_back(stack.back());
            nodes[static_cast<size_t>(stack.back())].isOnStack = false;
            stack.pop_back();
        } while (circle.back() != number);
        if (circle.size() > 1) ReportCircle(circle);
    }
}

} // namespace

void CheckLinkCycles() {
    nodes.clear();
    CollectNodes();
    for (size_t i = 0; i < nodes.size(); i++)
        if (nodes[i].order == Unseen) FindCirclesFrom(static_cast<int>(i));
}

} // namespace simhost
