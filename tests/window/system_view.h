// A running program as the system beneath Wine knows it. Wine tells some of this of no process but
// the asking one.
#ifndef TESSARIN_TESTS_WINDOW_SYSTEM_VIEW_H
#define TESSARIN_TESTS_WINDOW_SYSTEM_VIEW_H

#include <string>
#include <vector>

class SystemView {
  public:
    // The program's file name and its arguments, which together no other running program has.
    explicit SystemView(const std::vector<std::wstring>& words);
    // Whether there is such a system, and whether it knows the program.
    static bool Exists();
    bool Found() const { return !folder.empty(); }

    // Of all threads so far, in ticks of 10 ms; 0 if it cannot be told.
    double ProcessorSeconds() const;
    // Milliseconds that the program's threads stood ready to run while the processors were taken;
    // 0 if it cannot be told.
    double WaitedForProcessor() const;
    // Memory that is the program's alone and has been written to; -1 if it cannot be told.
    long long PrivateBytes() const;

  private:
    std::wstring folder;
};

#endif
