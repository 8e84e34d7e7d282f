#ifndef KIVGLES_TESTS_FAULTS_TRIAL_H
#define KIVGLES_TESTS_FAULTS_TRIAL_H

#include <map>
#include <string>

#include "faults/Effects.h"
#include "support/Scenarios.h"

namespace kivgles {

// Runs a scenario with a fault, or without, and looks at everything in between and afterwards. Returns
// whether all was well, having said what was not, and the calls of each function that the scenario made. In a
// process of its own, in which nothing was done before.
bool Try(const Scenario& scenario, const Fault& fault, int slot, std::map<std::string, int>& counts);

}  // namespace kivgles

#endif  // KIVGLES_TESTS_FAULTS_TRIAL_H
