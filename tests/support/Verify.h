// What verification finds, as a list.
#pragma once

#include "QmLogVerify.h"

#include <functional>
#include <string>
#include <vector>

struct Finding
{
    QmLogFindingKind kind;
    std::string file;
    unsigned long row;
    std::string reason;
};

inline std::vector<Finding> FindingsOf(
    const std::string& folder, const std::vector<std::string>& logs,
    std::function<bool(int)> progress = [](int) { return true; })
{
    struct List : QmLogVerifyListener
    {
        void OnFinding(const QmLogFinding& finding) override
        {
            findings.push_back({finding.kind, finding.file, finding.row, finding.reason});
        }
        bool OnProgress(int percent) override { return progress(percent); }

        std::vector<Finding> findings;
        std::function<bool(int)> progress;
    } list;
    list.progress = std::move(progress);
    std::vector<const char*> names;
    for (const std::string& log : logs)
        names.push_back(log.c_str());
    QmLogVerify(folder.c_str(), names.data(), names.size(), list);
    return list.findings;
}
