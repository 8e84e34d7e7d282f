// What it costs to hand a request from one thread to another. Run under an X server.

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>
#include <sched.h>
#include <sys/resource.h>

#include "SmallSurface.h"

namespace {

using bench::SmallSurface;

// Keeps the calling thread, and the threads it starts, on one of its processors.
class OneProcessor {
 public:
    OneProcessor() {
        sched_getaffinity(0, sizeof(before), &before);
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(sched_getcpu(), &one);
        sched_setaffinity(0, sizeof(one), &one);
    }
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;
    ~OneProcessor() { sched_setaffinity(0, sizeof(before), &before); }

 private:
    cpu_set_t before{};
};

// Threads that have always something to do.
class BusyThreads {
 public:
    explicit BusyThreads(std::int64_t count) {
        for (; count > 0; --count) {
            threads.emplace_back([this] {
                while (!stop) {
                }
            });
        }
    }
    BusyThreads(const BusyThreads&) = delete;
    BusyThreads& operator=(const BusyThreads&) = delete;
    ~BusyThreads() {
        stop = true;
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

 private:
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
};

// A word that two threads hand to and fro, by the plainest means.
class Word {
 public:
    enum Holder { ASKER, ANSWERER, NOBODY };

    void HandTo(Holder next) {
        const std::lock_guard<std::mutex> lock(mutex);
        holder = next;
        changed.notify_all();
    }
    // False when nobody will get it any more.
    bool WaitAs(Holder self) {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this, self] { return holder == self || holder == NOBODY; });
        return holder == self;
    }

 private:
    std::mutex mutex;
    std::condition_variable changed;
    Holder holder = ASKER;
};

// A question and its answer between two plain threads: what WaitingCall is to be compared with.
void PlainPair(benchmark::State& state) {
    const OneProcessor oneProcessor;
    Word word;
    std::thread answerer([&word] {
        while (word.WaitAs(Word::ANSWERER)) {
            word.HandTo(Word::ASKER);
        }
    });
    {
        const BusyThreads busy(state.range(0));
        for (auto _ : state) {
            word.HandTo(Word::ANSWERER);
            word.WaitAs(Word::ASKER);
        }
    }
    word.HandTo(Word::NOBODY);
    answerer.join();
}
BENCHMARK(PlainPair)->ArgName("busy")->Arg(0)->Arg(2)->UseRealTime();

// A waiting call that has nothing to do.
void WaitingCall(benchmark::State& state) {
    const OneProcessor oneProcessor;
    SmallSurface small;
    const BusyThreads busy(state.range(0));
    for (auto _ : state) {
        small.Drain();
    }
}
BENCHMARK(WaitingCall)->ArgName("busy")->Arg(0)->Arg(2)->UseRealTime();

rusage UsedUntilNow() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used;
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Ticks queued in a row while the draw thread takes them; the time for each until all are drawn, and what the
// system had to do with it.
void Burst(benchmark::State& state) {
    SmallSurface small;
    const auto ticks = state.range(0);
    const rusage before = UsedUntilNow();
    for (auto _ : state) {
        for (auto i = ticks; i > 0; --i) {
            small.DrawTick();
        }
        small.Drain();
    }
    const rusage after = UsedUntilNow();
    const double drawn = static_cast<double>(state.iterations() * ticks);
    state.SetItemsProcessed(state.iterations() * ticks);
    const double system = Seconds(after.ru_stime) - Seconds(before.ru_stime);
    const double user = Seconds(after.ru_utime) - Seconds(before.ru_utime);
    state.counters["cpu_ns"] = 1e9 * (user + system) / drawn;
    state.counters["system_ns"] = 1e9 * system / drawn;
    state.counters["switches"] =
        static_cast<double>(after.ru_nvcsw + after.ru_nivcsw - before.ru_nvcsw - before.ru_nivcsw) / drawn;
}
BENCHMARK(Burst)->ArgName("ticks")->Arg(1)->Arg(16)->Arg(400)->UseRealTime();

}  // namespace
