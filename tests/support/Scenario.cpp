#include "support/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace kivgles {

namespace {

constexpr char FOLDER[] = KIVGLES_TESTS "/scenarios/";

// A line and those below it that are indented further.
struct Node {
    TraceLine line;
    std::vector<Node> below;
};

struct Contract {
    std::vector<std::string> parameters;
    std::vector<Node> lines;
};

[[noreturn]] void Refuse(const TraceLine& line, const std::string& complaint) {
    throw std::runtime_error(line.place + ": " + complaint + ": " + line.text);
}

// Every level is indented by two. Comments, which begin a line at the left margin, are left out.
std::vector<Node> ReadNodes(const std::string& name) {
    std::ifstream file(FOLDER + name);
    std::vector<Node> roots;
    std::size_t number = 0;
    for (std::string text; std::getline(file, text);) {
        const TraceLine whole{text, name + ":" + std::to_string(++number)};
        const std::size_t indent = text.find_first_not_of(' ');
        if (indent == std::string::npos || text[0] == '#') {
            continue;
        }
        std::vector<Node>* level = &roots;
        for (std::size_t depth = 0; depth < indent; depth += 2) {
            if (level->empty()) {
                Refuse(whole, "below nothing");
            }
            level = &level->back().below;
        }
        level->push_back({{text.substr(indent), whole.place}, {}});
    }
    return roots;
}

// "Name(value, value)"
std::string NameOf(const std::string& call) { return call.substr(0, call.find('(')); }
std::vector<std::string> ValuesOf(const std::string& call) {
    std::vector<std::string> values;
    const std::size_t end = call.rfind(')');
    for (std::size_t begin = call.find('(') + 1; begin < end;) {
        const std::size_t comma = std::min(call.find(", ", begin), end);
        values.push_back(call.substr(begin, comma - begin));
        begin = comma + 2;
    }
    return values;
}

std::map<std::string, Contract> ReadContracts() {
    constexpr std::string_view LEAD = "contract ";
    std::map<std::string, Contract> contracts;
    for (const auto& entry : std::filesystem::directory_iterator(FOLDER + std::string("contracts"))) {
        for (const Node& node : ReadNodes("contracts/" + entry.path().filename().string())) {
            const std::string head = node.line.text.substr(LEAD.size());
            if (!contracts.try_emplace(NameOf(head), Contract{ValuesOf(head), node.below}).second) {
                Refuse(node.line, "written twice");
            }
        }
    }
    return contracts;
}

using Values = std::map<std::string, std::string>;

std::string WithValues(std::string text, const Values& values) {
    for (const auto& [parameter, value] : values) {
        const std::string hole = "{" + parameter + "}";
        for (std::size_t at = text.find(hole); at != std::string::npos;
             at = text.find(hole, at + value.size())) {
            text.replace(at, hole.size(), value);
        }
    }
    return text;
}

// Lines of a contract, or of a scenario without values. `block` is what stands below the contract's name.
std::vector<TraceLine> WrittenOut(const std::vector<Node>& nodes, const Values& values,
                                  const std::vector<TraceLine>& block) {
    static const std::map<std::string, Contract> CONTRACTS = ReadContracts();
    std::vector<TraceLine> lines;
    for (const Node& node : nodes) {
        const TraceLine line{WithValues(node.line.text, values), node.line.place};
        const std::vector<TraceLine> below = WrittenOut(node.below, values, block);
        const auto named = CONTRACTS.find(NameOf(line.text));
        std::vector<TraceLine> more = line.text == "..." ? block : std::vector<TraceLine>{line};
        if (named != CONTRACTS.end()) {
            const Contract& contract = named->second;
            const std::vector<std::string> given = ValuesOf(line.text);
            if (given.size() != contract.parameters.size()) {
                Refuse(line, "takes other values");
            }
            Values inside;
            for (std::size_t i = 0; i < given.size(); ++i) {
                inside[contract.parameters[i]] = given[i];
            }
            more = WrittenOut(contract.lines, inside, below);
        } else if (!below.empty()) {
            Refuse(line, "no contract of that name");
        }
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

// "> command = answer: first line  # comment"
Step ReadStep(const Node& node) {
    const std::string& text = node.line.text;
    if (text.compare(0, 2, "> ") != 0) {
        Refuse(node.line, "no operation");
    }
    const std::string whole = text.substr(2, text.find("  #") - 2);
    const std::size_t colon = whole.find(": ");
    const std::string step = whole.substr(0, colon);
    const std::size_t equals = step.find(" = ");
    std::vector<Node> lines = node.below;
    if (colon != std::string::npos) {
        lines.insert(lines.begin(), Node{{whole.substr(colon + 2), node.line.place}, {}});
    }
    return {step.substr(0, equals), equals == std::string::npos ? "0" : step.substr(equals + 3),
            WrittenOut(lines, {}, {}), node.line.place};
}

}  // namespace

std::vector<std::string> ScenarioNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(FOLDER)) {
        if (entry.path().extension() == ".txt") {
            names.push_back(entry.path().stem());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

Scenario ReadScenario(const std::string& name) {
    constexpr std::string_view BEGINNING = "> as in ";
    Scenario scenario;
    for (const Node& node : ReadNodes(name + ".txt")) {
        const std::string& text = node.line.text;
        if (text.compare(0, BEGINNING.size(), BEGINNING) == 0) {
            const Scenario other = ReadScenario(text.substr(BEGINNING.size()));
            scenario.steps.insert(scenario.steps.end(), other.steps.begin(), other.steps.end());
        } else {
            scenario.steps.push_back(ReadStep(node));
        }
    }
    if (scenario.steps.empty()) {
        throw std::runtime_error("no scenario of that name: " + name);
    }
    return scenario;
}

}  // namespace kivgles
