// One design in the library and in the model, for tests that build their own.
#pragma once

#include "reference/NetworkScript.h"

#include <string>

namespace reference {

class BothSides {
public:
    BothSides();
    ~BothSides();
    BothSides(const BothSides&) = delete;
    BothSides& operator=(const BothSides&) = delete;

    // Adds a record to both; its id is the next one.
    int Add(Type type, const Ids& links, const Values& values = {});
    // Runs a step on both. Empty when the outcomes are equal, else what is different.
    std::string Run(const StepKind& kind, const Args& args);
    // Whether every record has the same links and attributes.
    std::string CompareRecords() const;
    // Empties both.
    void Clear();
    // A step of random kind, by their weights.
    std::string RunRandom(std::mt19937& random, const std::vector<StepKind>& kinds);

    OpenNetwork library;

private:
    Model m_model;

public:
    Network network;
};

} // namespace reference
