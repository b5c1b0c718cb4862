// What the tests of qvpres share: the vocabulary of the guide's chart, and texts cut by it.
#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Printing.h"
#include "tools/RunProgram.h"

#include "tools/qvpres/LoadedVocabulary.h"
#include "tools/qvpres/text/ParameterText.h"

inline const std::string kProjectFolder = PROJECT_FOLDER;
inline const std::string kChartFile = kProjectFolder + "/examples/qvpres/chart.vocabulary.json";

// A vocabulary of one namespace "view", 1000 to 1999, with these parameters.
inline std::string ViewText(const std::string& parameters) {
    return R"({"namespaces": [{"name": "view", "firstId": 1000, "lastId": 1999, "parameters": [)" + parameters + "]}]}";
}

// The chart's vocabulary, loaded and published as long as it lives.
class ChartHost {
public:
    ChartHost() : m_loaded(qvpres::Vocabulary::FromFile(kChartFile)) {}

    const qvpres::LoadedVocabulary& Loaded() const { return m_loaded; }

    std::unique_ptr<qvpres::ParameterText> Cut(const std::string& json, const std::string& names = "auto") const {
        return std::make_unique<qvpres::ParameterText>(TString::FromUtf8(json), m_loaded, L"chart", names);
    }

private:
    qvpres::LoadedVocabulary m_loaded;
};

// The arguments of a command on chart texts: command, vocabulary, and what else there is.
inline std::vector<std::string> ChartArguments(const std::string& command, std::vector<std::string> rest = {}) {
    rest.insert(rest.begin(), {command, "--vocabulary", kChartFile});
    return rest;
}

inline Outcome RunOnChart(const std::string& command, std::vector<std::string> rest = {},
                          const std::string& input = "") {
    return RunQvpres(ChartArguments(command, std::move(rest)), input);
}
