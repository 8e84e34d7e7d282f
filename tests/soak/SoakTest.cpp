// What months in a service come to, on the real EGL: as many lives of a surface as SOAK_LIVES says, then as
// many commands in one life as SOAK_COMMANDS says, of eight clients at once. The sweep of faults looks at
// what else than memory a life leaves behind.

#include <android/log.h>
#include <gtest/gtest.h>

#include "races/BusyClient.h"
#include "soak/Watch.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

TEST(Soak, HoldsNoMoreMemoryAfterManyLivesAndCommands) {
    __android_log_set_logger([](const __android_log_message*) {});
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    UseOneHeap();
    const X11Window window(CANVAS.width, CANVAS.height);
    Watch("lives", NumberOf("SOAK_LIVES", "60"), [&] { BusySurface(window.Native()).Rounds(1); });
    BusySurface busy(window.Native());
    const unsigned int rounds = NumberOf("SOAK_COMMANDS", "40000") / (CLIENTS * BusyClient::ROUND);
    Watch("rounds of 400 commands", rounds, [&] { busy.Rounds(1); });
}

}  // namespace
}  // namespace kivgles
