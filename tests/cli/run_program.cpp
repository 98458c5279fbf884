#include "tests/cli/run_program.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

// A file that is gone when the test is.
struct ScratchFile {
    char path[32] = "/tmp/tessarin-test-XXXXXX";
    int handle;
    ScratchFile() : handle(mkstemp(path)) {}
    ~ScratchFile() {
        close(handle);
        unlink(path);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string Contents() const {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
};

[[noreturn]] void BecomeProgram(const Arguments& arguments) {
    std::vector<char*> words = {const_cast<char*>(TESSARIN_PROGRAM)};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    execv(TESSARIN_PROGRAM, words.data());
    _exit(127);
}

int StatusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

ProgramRun RunProgram(const Arguments& arguments, const std::string& input) {
    ScratchFile out;
    ProgramRun run = RunProgramInto(out.path, arguments, input);
    run.out = out.Contents();
    return run;
}

ProgramRun RunProgramInto(const char* path, const Arguments& arguments, const std::string& input) {
    ScratchFile in;
    ScratchFile err;
    std::ofstream(in.path, std::ios::binary) << input;
    const pid_t child = fork();
    if (child == 0) {
        dup2(open(in.path, O_RDONLY), 0);
        dup2(open(path, O_WRONLY), 1);
        dup2(err.handle, 2);
        BecomeProgram(arguments);
    }
    const int status = StatusOf(child);
    return {status, "", err.Contents()};
}

ProgramRun Converse(const Arguments& arguments, const std::vector<std::string>& lines) {
    int question[2];
    int answer[2];
    if (pipe(question) != 0 || pipe(answer) != 0) {
        return {-1, "", "no pipes"};
    }
    const pid_t child = fork();
    if (child == 0) {
        dup2(question[0], 0);
        dup2(answer[1], 1);
        for (const int end : {question[0], question[1], answer[0], answer[1]}) {
            close(end);
        }
        BecomeProgram(arguments);
    }
    close(question[0]);
    close(answer[1]);
    ProgramRun run{};
    for (const std::string& line : lines) {
        if (write(question[1], line.data(), line.size()) < 0) {
            break;
        }
        char byte = '\0';
        while (byte != '\n' && read(answer[0], &byte, 1) == 1) {
            run.out.push_back(byte);
        }
    }
    close(question[1]);
    run.status = StatusOf(child);
    close(answer[0]);
    return run;
}

ProgramRun RunOnTerminal(const Arguments& arguments, int signal, const std::string& waitedFor) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
        BecomeProgram(arguments);
    }
    ProgramRun run{};
    char bytes[4096];
    // Reading fails once the program has let go of the terminal.
    for (ssize_t got = read(terminal, bytes, sizeof bytes); got > 0;
         got = read(terminal, bytes, sizeof bytes)) {
        run.out.append(bytes, static_cast<std::size_t>(got));
        if (signal != 0 && run.out.find(waitedFor) != std::string::npos) {
            kill(child, signal);
            signal = 0;
        }
    }
    run.status = StatusOf(child);
    close(terminal);
    return run;
}
