#include "tests/support/ChildProcess.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <map>
#include <stdexcept>

namespace norvane {

namespace {

constexpr const char* kRoleOption = "--role";

std::map<std::string, TestRole::Main>& roles() {
    static std::map<std::string, TestRole::Main> all;
    return all;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> environmentOf(const ChildProcess::Options& options) {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const auto equals = text.find('=');
        variables[text.substr(0, equals)] = equals == std::string::npos ? "" : text.substr(equals + 1);
    }
    for (const auto& [name, value] : options.environment)
        variables[name] = value;
    std::vector<std::string> result;
    for (const auto& [name, value] : variables)
        result.push_back(name + "=" + value);
    return result;
}

/// An unnamed file with this content, to be read from its start.
int fileWith(const std::string& content) {
    const int file = memfd_create("input", MFD_CLOEXEC);
    if (file < 0 || write(file, content.data(), content.size()) != static_cast<ssize_t>(content.size()) ||
        lseek(file, 0, SEEK_SET) != 0) {
        throw std::runtime_error("no input could be made for a program");
    }
    return file;
}

} // namespace

ChildProcess::ChildProcess(const Options& options) {
    auto arguments = options.arguments;
    auto environment = environmentOf(options);
    const auto argumentPointers = pointers(arguments);
    const auto environmentPointers = pointers(environment);
    const int input = fileWith(options.input);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe could be made for a program");
    const int errors = options.isQuiet ? open("/dev/null", O_WRONLY | O_CLOEXEC) : STDERR_FILENO;
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(127);
        dup2(input, STDIN_FILENO);
        dup2(ends[1], STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        execvpe(argumentPointers[0], argumentPointers.data(), environmentPointers.data());
        _exit(127);
    }
    ::close(input);
    ::close(ends[1]);
    if (options.isQuiet) ::close(errors);
    output_ = ends[0];
    if (process_ < 0) throw std::runtime_error("no process could be started");
}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
    std::swap(process_, other.process_);
    std::swap(output_, other.output_);
    return *this;
}

ChildProcess ChildProcess::inRole(const std::string& role, const std::vector<std::string>& arguments) {
    Options options;
    options.arguments = {"/proc/self/exe", kRoleOption, role};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    return ChildProcess(options);
}

std::string ChildProcess::readLine() {
    std::string line;
    char character = 0;
    while (read(output_, &character, 1) == 1 && character != '\n')
        line += character;
    return line;
}

int ChildProcess::wait() {
    int status = 0;
    if (process_ < 0 || waitpid(std::exchange(process_, -1), &status, 0) < 0) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProcess::stop() {
    if (process_ >= 0) {
        kill(process_, SIGTERM);
        wait();
    }
    if (output_ >= 0) ::close(std::exchange(output_, -1));
}

TestRole::TestRole(std::string name, Main main) { roles().emplace(std::move(name), main); }

int playRole(int argc, char** argv) {
    if (argc < 3 || std::string(argv[1]) != kRoleOption) return -1;
    return roles().at(argv[2])({argv + 3, argv + argc});
}

} // namespace norvane
