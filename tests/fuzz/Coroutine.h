#ifndef KIVGLES_TESTS_FUZZ_COROUTINE_H
#define KIVGLES_TESTS_FUZZ_COROUTINE_H

// Makes the thread that a program starts a coroutine: it runs while the program waits for a condition
// variable, or lets it run, until it waits for one itself. Everything happens in one order for the same
// input, and no time is lost between threads. Linked into the program, it stands before the standard
// library's std::thread (one at a time, detached) and std::condition_variable.
//
// Thread: the program's only one.
namespace coroutine {

// Lets it run, if there is one, until it waits or ends.
void Run();

bool HasEnded();

}  // namespace coroutine

#endif  // KIVGLES_TESTS_FUZZ_COROUTINE_H
