#ifndef KIVGLES_TESTS_FAULTS_EFFECTS_H
#define KIVGLES_TESTS_FAULTS_EFFECTS_H

// What a client sees of a fault: for each function that may fail, and the operation in which it does, the
// code and the lines.

#include <string>
#include <vector>

#include "support/Scenarios.h"

namespace kivgles {

struct Fault {
    std::string function;  // empty: none
    int nth = 0;           // call since the scenario began
    bool forGood = false;  // and every later call
};

constexpr int SAME = 0;  // as without the fault

struct Effect {
    const char* functions;  // each name followed by a blank
    unsigned int operations;
    int nth;                         // call within the operation; 0: any
    int code;                        // of an operation that is not queued
    std::vector<const char*> lines;  // parts of lines that must come; with a '?' in front, that may
};

// Those of which one must show when the `first` call within the operation fails, and with a fault for good
// the later ones too. None: nobody has thought about it.
std::vector<const Effect*> FindEffects(const Fault& fault, Operation operation, int first);

// Every function may fail that is not known to do without failure.
bool IsFallible(const std::string& function);

// Whether what failed once stays so, unnoticed, for as long as the renderer or the window lives.
bool Lasts(const std::string& function);

// Whether objects of this kind, or "memory", may be left because the function refused to let go of them.
bool MayLeave(const std::string& function, const std::string& kind);

}  // namespace kivgles

#endif  // KIVGLES_TESTS_FAULTS_EFFECTS_H
