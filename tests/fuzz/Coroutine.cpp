#include "Coroutine.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <utility>

#include <sanitizer/common_interface_defs.h>
#include <sched.h>
#include <ucontext.h>

#include "StubGL.h"

namespace {

constexpr std::size_t STACK_SIZE = 256 * 1024;

// The program or the coroutine, while the other one runs.
struct Side {
    ucontext_t registers;
    const void* stack;
    std::size_t stackSize;
    void* fakeStack;  // the address sanitizer's
    stubgl::Context context;
};

alignas(16) char stack[STACK_SIZE];
Side program;
Side thread;
std::thread::_State_ptr body;  // null: there is no coroutine
bool isThread = false;         // which one runs
bool signalled = false;        // since the program waits

void Switch(Side& from, Side& to) {
    isThread = !isThread;
    from.context = stubgl::SetContext(to.context);
    __sanitizer_start_switch_fiber(&from.fakeStack, to.stack, to.stackSize);
    swapcontext(&from.registers, &to.registers);
    __sanitizer_finish_switch_fiber(from.fakeStack, nullptr, nullptr);
}

void Main() {
    __sanitizer_finish_switch_fiber(nullptr, &program.stack, &program.stackSize);
    body->_M_run();
    body.reset();
    Switch(thread, program);
}

}  // namespace

namespace coroutine {

void Run() {
    if (body != nullptr) {
        Switch(program, thread);
    }
}

bool HasEnded() { return body == nullptr; }

}  // namespace coroutine

void std::thread::_M_start_thread(_State_ptr state, void (*)()) {
    stubgl::Expect(body == nullptr, "a second thread is started");
    body = std::move(state);
    ::thread = {{}, stack, STACK_SIZE, nullptr, stubgl::Context::NEVER};
    getcontext(&::thread.registers);
    ::thread.registers.uc_stack.ss_sp = stack;
    ::thread.registers.uc_stack.ss_size = STACK_SIZE;
    makecontext(&::thread.registers, Main, 0);
}

void std::thread::detach() {}

void std::condition_variable::wait(std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    if (isThread) {
        Switch(::thread, program);
    } else {
        signalled = false;
        coroutine::Run();
        stubgl::Expect(signalled, "a client waits for ever");
    }
    lock.lock();
}

void std::condition_variable::notify_one() noexcept { signalled = true; }

// Nobody else is there to run.
extern "C" int sched_yield() noexcept { return 0; }
