/// @file
/// @brief A throw-away network namespace for tests that need a host of their own (root only).
///
/// The namespace, its /etc/netns directory, a scratch directory and every process started in
/// it are removed by the destructor, so a failing test leaves nothing behind. Names carry the
/// process id, so parallel test processes never collide.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace fntest {

inline bool isRoot() {
    return ::geteuid() == 0;
}

struct CommandResult {
    int status = -1;  ///< exit status, or 128 + signal
    std::string out;  ///< standard output
};

namespace detail {

inline std::vector<std::string> splitWords(const std::string& words) {
    std::istringstream in(words);
    std::vector<std::string> result;
    for (std::string word; in >> word;) {
        result.push_back(word);
    }
    return result;
}

inline pid_t spawn(const std::vector<std::string>& argv, int stdoutFd) {
    std::vector<char*> args;
    for (const auto& arg : argv) {
        args.push_back(const_cast<char*>(arg.c_str()));
    }
    args.push_back(nullptr);
    const pid_t pid = ::fork();
    if (pid == 0) {
        const int devNull = ::open("/dev/null", O_RDWR);
        ::dup2(devNull, 0);
        ::dup2(stdoutFd >= 0 ? stdoutFd : devNull, 1);
        ::dup2(devNull, 2);
        ::execvp(args[0], args.data());
        ::_exit(127);
    }
    if (pid < 0) {
        throw std::runtime_error("fork failed");
    }
    return pid;
}

inline int waitFor(pid_t pid) {
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace detail

/// Runs argv, standard output captured, standard error discarded.
inline CommandResult run(const std::vector<std::string>& argv) {
    int fds[2];
    if (::pipe(fds) != 0) {
        throw std::runtime_error("pipe failed");
    }
    const pid_t pid = detail::spawn(argv, fds[1]);
    ::close(fds[1]);
    CommandResult result;
    char buffer[4096];
    for (ssize_t n; (n = ::read(fds[0], buffer, sizeof buffer)) != 0;) {
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n < 0) {
            break;
        }
        result.out.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fds[0]);
    result.status = detail::waitFor(pid);
    return result;
}

/// Runs a command given as blank-separated words; throws with the command when it fails.
inline std::string mustRun(const std::string& words) {
    const auto result = run(detail::splitWords(words));
    if (result.status != 0) {
        throw std::runtime_error("'" + words + "' failed with status " +
                                 std::to_string(result.status));
    }
    return result.out;
}

class NetworkNamespace {
public:
    explicit NetworkNamespace(const std::string& prefix)
        : name_(prefix + "-" + std::to_string(::getpid())),
          etc_("/etc/netns/" + name_),
          scratch_(std::filesystem::temp_directory_path() / ("fnet-" + name_)) {
        run({"ip", "netns", "del", name_});  // a leftover of a crashed run with a reused pid
        mustRun("ip netns add " + name_);
        std::filesystem::create_directories(etc_);
        std::filesystem::create_directories(scratch_);
    }

    ~NetworkNamespace() {
        for (const pid_t pid : processes_) {
            ::kill(pid, SIGTERM);
            detail::waitFor(pid);
        }
        run({"ip", "netns", "del", name_});
        std::error_code ignored;
        std::filesystem::remove_all(etc_, ignored);
        std::filesystem::remove_all(scratch_, ignored);
    }

    NetworkNamespace(const NetworkNamespace&) = delete;
    NetworkNamespace& operator=(const NetworkNamespace&) = delete;

    const std::string& name() const { return name_; }

    /// `ip -n NAME <words>`; throws when it fails.
    void ip(const std::string& words) const { mustRun("ip -n " + name_ + " " + words); }

    /// Writes /etc/netns/NAME/<file>, which `ip netns exec` shows as /etc/<file>.
    void writeEtc(const std::string& file, const std::string& content) const {
        write(etc_ / file, content);
    }

    /// Writes a file into the scratch directory and returns its path.
    std::string writeScratch(const std::string& file, const std::string& content) const {
        write(scratch_ / file, content);
        return (scratch_ / file).string();
    }

    std::string scratch() const { return scratch_.string(); }

    /// Runs argv inside the namespace (at most 60 s), standard output captured.
    CommandResult exec(const std::vector<std::string>& argv) const {
        std::vector<std::string> full{"timeout", "60", "ip", "netns", "exec", name_};
        full.insert(full.end(), argv.begin(), argv.end());
        return run(full);
    }

    /// Starts argv inside the namespace in the background; it is stopped by the destructor.
    void start(const std::vector<std::string>& argv) {
        std::vector<std::string> full{"ip", "netns", "exec", name_};
        full.insert(full.end(), argv.begin(), argv.end());
        processes_.push_back(detail::spawn(full, -1));
    }

private:
    static void write(const std::filesystem::path& path, const std::string& content) {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << content;
        if (!out) {
            throw std::runtime_error("cannot write " + path.string());
        }
    }

    std::string name_;
    std::filesystem::path etc_;
    std::filesystem::path scratch_;
    std::vector<pid_t> processes_;
};

/// The lines of a text, without their line ends.
inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        result.push_back(line);
    }
    return result;
}

}  // namespace fntest
