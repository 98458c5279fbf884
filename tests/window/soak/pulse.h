// Feels a program's pulse from a thread of its own: a small message again and again, each of which
// its main thread has to answer.
//
// The machine may be busy with other things. A program that is ready to run and does not get a
// processor does not hang, so the time for which it stood ready is taken off, and so is the time by
// which a thread of the test's own, which only sleeps and asks the system a small question, came
// late meanwhile. What is left is the program's own time.
#ifndef TESSARIN_TESTS_WINDOW_SOAK_PULSE_H
#define TESSARIN_TESTS_WINDOW_SOAK_PULSE_H

#include <atomic>
#include <thread>

#include "tests/window/soak/objects.h"

inline constexpr double LongestSilence = 2000; // milliseconds of the program's own time

class Pulse {
  public:
    Pulse(HWND window, const SystemView& view);
    ~Pulse();
    Pulse(const Pulse&) = delete;
    Pulse& operator=(const Pulse&) = delete;
    void Stop();

    // The longest silences so far, in milliseconds: by the clock, and of the program's own time.
    double LongestByClock() const { return byClock; }
    double LongestOfItsOwn() const { return ofItsOwn; }
    long Beats() const { return beats; }

  private:
    void Feel();
    void Watch();
    void Beat();

    HWND window;
    const SystemView& view;
    std::atomic<bool> stop{false};
    std::atomic<double> byClock{0};
    std::atomic<double> ofItsOwn{0};
    std::atomic<double> late{0}; // the watching thread's, in all
    std::atomic<long> beats{0};
    std::thread feeling;
    std::thread watching;
};

#endif
