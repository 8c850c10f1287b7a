#include "tests/support/KillTracer.h"

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <map>
#include <stdexcept>

namespace norvane::testing {

namespace {

struct NamedCall {
    long number;
    const char* name;
};

constexpr std::array kCalls{
    NamedCall{SYS_openat, "openat"},         NamedCall{SYS_write, "write"},
    NamedCall{SYS_pwrite64, "pwrite64"},     NamedCall{SYS_writev, "writev"},
    NamedCall{SYS_ftruncate, "ftruncate"},   NamedCall{SYS_fallocate, "fallocate"},
    NamedCall{SYS_fsync, "fsync"},           NamedCall{SYS_fdatasync, "fdatasync"},
    NamedCall{SYS_rename, "rename"},         NamedCall{SYS_renameat, "renameat"},
    NamedCall{SYS_renameat2, "renameat2"},   NamedCall{SYS_unlink, "unlink"},
    NamedCall{SYS_unlinkat, "unlinkat"},     NamedCall{SYS_link, "link"},
    NamedCall{SYS_linkat, "linkat"},         NamedCall{SYS_mkdir, "mkdir"},
    NamedCall{SYS_mkdirat, "mkdirat"},       NamedCall{SYS_rmdir, "rmdir"},
    NamedCall{SYS_connect, "connect"},       NamedCall{SYS_sendto, "sendto"},
    NamedCall{SYS_sendmsg, "sendmsg"},       NamedCall{SYS_recvfrom, "recvfrom"},
    NamedCall{SYS_exit_group, "exit_group"},
};

/// Stops the tracee at the calls above only; everything else runs at full speed.
void installFilter() {
    std::vector<sock_filter> program;
    program.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
    for (const NamedCall& call : kCalls) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<__u32>(call.number), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) _exit(126);
}

[[noreturn]] void runChild(const KillTracer::Command& command) {
    const int output = open(command.outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    close(output);
    std::vector<char*> arguments;
    for (const std::string& argument : command.arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    std::vector<char*> environment;
    for (const std::string& entry : command.environment)
        environment.push_back(const_cast<char*>(entry.c_str()));
    environment.push_back(nullptr);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    installFilter();
    execve(arguments[0], arguments.data(), environment.data());
    _exit(127);
}

std::string textAt(pid_t process, unsigned long address) {
    std::array<char, 4096> buffer{};
    iovec local{buffer.data(), 256};
    iovec remote{reinterpret_cast<void*>(address), 256};
    if (process_vm_readv(process, &local, 1, &remote, 1, 0) <= 0) return {};
    return std::string(buffer.data());
}

/// Follows every thread of one program.
class Tracing {
  public:
    Tracing(const KillTracer::Command& command, std::optional<KillPoint> killAt)
        : root_(command.root)
        , killAt_(killAt)
        , main_(fork()) {
        if (main_ < 0) throw std::runtime_error("fork failed");
        if (main_ == 0) runChild(command);
    }

    KillTracer::Run follow() {
        int status = 0;
        waitpid(main_, &status, 0);
        ptrace(PTRACE_SETOPTIONS, main_, nullptr,
               PTRACE_O_TRACESECCOMP | PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL);
        threads_[main_] = 0;
        ptrace(PTRACE_CONT, main_, nullptr, nullptr);
        for (;;) {
            const pid_t thread = waitpid(-1, &status, __WALL);
            if (thread < 0) break;
            if (WIFEXITED(status) || WIFSIGNALED(status)) {
                if (thread != main_) continue;
                if (WIFEXITED(status)) run_.exitStatus = WEXITSTATUS(status);
                break;
            }
            if (WIFSTOPPED(status)) handleStop(thread, status);
        }
        return run_;
    }

  private:
    void handleStop(pid_t thread, int status) {
        const int event = status >> 16;
        int signal = 0;
        if (event == PTRACE_EVENT_CLONE) {
            unsigned long created = 0;
            ptrace(PTRACE_GETEVENTMSG, thread, nullptr, &created);
            number(static_cast<pid_t>(created));
        } else if (event == PTRACE_EVENT_SECCOMP) {
            if (reached(thread)) {
                kill(main_, SIGKILL);
                run_.killed = true;
                return;
            }
        } else if (WSTOPSIG(status) != SIGSTOP && WSTOPSIG(status) != SIGTRAP) {
            signal = WSTOPSIG(status);
        }
        number(thread);
        ptrace(PTRACE_CONT, thread, nullptr, signal);
    }

    int number(pid_t thread) {
        return threads_.try_emplace(thread, static_cast<int>(threads_.size())).first->second;
    }

    bool reached(pid_t thread) {
        user_regs_struct registers{};
        ptrace(PTRACE_GETREGS, thread, nullptr, &registers);
        const long call = static_cast<long>(registers.orig_rax);
        if (call == SYS_openat) {
            const std::string path = textAt(thread, registers.rsi);
            if (!armed_ && path.starts_with(root_)) armed_ = true;
            const bool makesFile = (registers.rdx & O_CREAT) && access(path.c_str(), F_OK) != 0;
            if (!makesFile && !(registers.rdx & O_TRUNC)) return false;
        }
        if (!armed_) return false;
        const int index = number(thread);
        const KillPoint point{index, call, ++counts_[{index, call}]};
        run_.points.push_back(point);
        return killAt_ && point == *killAt_;
    }

    std::string root_;
    std::optional<KillPoint> killAt_;
    pid_t main_;
    bool armed_ = false;
    std::map<pid_t, int> threads_;
    std::map<std::pair<int, long>, int> counts_;
    KillTracer::Run run_;
};

} // namespace

std::string KillPoint::description() const {
    std::string name = std::to_string(call);
    for (const NamedCall& known : kCalls)
        if (known.number == call) name = known.name;
    return "thread " + std::to_string(thread) + ", " + name + ", " + std::to_string(count);
}

KillTracer::Run KillTracer::run(const Command& command, std::optional<KillPoint> killAt) {
    return Tracing(command, killAt).follow();
}

} // namespace norvane::testing
