// The list of findings. Two checks may see the same mistake: equal lines are printed once.
#include "authoring/check/findings.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace simhost {

namespace {

struct Finding {
    std::string file;
    int line = 0;
    Severity severity = Severity::Error;
    std::string text;
    bool isCause = false;
    int lastLine = 0; // of a symptom: where its cause may be
    auto Key() const { return std::tie(file, line, severity, text); }
};

std::vector<Finding> findings;

const char *NameOf(Severity severity) {
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

void PrintCount(size_t count, const char *what, const char *separator) {
    std::printf("%zu %s%s%s", count, what, count == 1 ? "" : "s", separator);
}

// Of what stands in a line with a cause, or in a file with one, only the first cause is kept.
void DropConsequences() {
    std::set<std::pair<std::string, int>> explained;
    for (const Finding &finding : findings)
        if (finding.isCause) explained.emplace(finding.file, finding.line);
    std::set<std::pair<std::string, int>> others;
    for (const Finding &finding : findings)
        if (finding.lastLine == 0) others.emplace(finding.file, finding.line);
    std::set<std::pair<std::string, int>> told;
    std::erase_if(findings, [&](const Finding &finding) {
        if (finding.lastLine > 0) {
            const auto other = others.lower_bound({finding.file, finding.line - 1});
            if (other != others.end() && *other <= std::pair(finding.file, finding.lastLine)) return true;
        }
        const bool isInFile = explained.contains({finding.file, 0});
        if (!isInFile && !explained.contains({finding.file, finding.line})) return false;
        return !finding.isCause || (isInFile && finding.line != 0)
               || !told.emplace(finding.file, finding.line).second;
    });
}

} // namespace

void AddFinding(Severity severity, const std::string &file, int line, const std::string &text) {
    findings.push_back({.file = file, .line = line, .severity = severity, .text = text});
}

void AddSymptom(Severity severity, const std::string &file, int line, int lastLine, const std::string &text) {
    AddFinding(severity, file, line, text);
    findings.back().lastLine = lastLine;
}

void AddCause(const std::string &file, int line, const std::string &text) {
    AddFinding(Severity::Error, file, line, text);
    findings.back().isCause = true;
}

bool PrintFindings(const std::string &pluginFolder, const std::string &folder,
                   const std::string &shownFolder) {
    for (Finding &finding : findings) {
        if (!finding.file.starts_with('/')) finding.file.insert(0, pluginFolder);
        if (finding.file.starts_with(folder)) finding.file.replace(0, folder.size(), shownFolder);
    }
    DropConsequences();
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding &a, const Finding &b) { return a.Key() < b.Key(); });
    const auto isSame = [](const Finding &a, const Finding &b) { return a.Key() == b.Key(); };
    findings.erase(std::unique(findings.begin(), findings.end(), isSame), findings.end());

    size_t counts[3] = {};
    for (const Finding &finding : findings) {
        counts[static_cast<size_t>(finding.severity)]++;
        std::printf("%s", finding.file.c_str());
        if (finding.line > 0) std::printf(":%d", finding.line);
        std::printf(": %s: %s\n", NameOf(finding.severity), finding.text.c_str());
    }
    PrintCount(counts[0], "error", ", ");
    PrintCount(counts[1], "warning", ", ");
    PrintCount(counts[2], "note", "\n");
    findings.clear();
    return counts[0] == 0 && counts[1] == 0;
}

} // namespace simhost
