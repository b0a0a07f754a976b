/// @file
/// @brief Runs programs for the tests, and a throw-away network namespace for tests that need a
/// host of their own (root only).
///
/// A namespace is built from a recipe in tests/data/inet_hosts.tsv. It, its /etc/netns directory,
/// its scratch file and every process started in it are removed by the destructor, so a failing
/// test leaves nothing behind. Names carry the process id, so parallel test processes never
/// collide. A test program checks a namespace from the inside by running its own tests there
/// (runInside); those tests begin with FNTEST_INSIDE() and skip elsewhere.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Table.h"

#define FNTEST_INSIDE()                                                            \
    if (std::getenv("FNTEST_INSIDE") == nullptr) {                                 \
        GTEST_SKIP() << "runs inside the network namespace its outer test builds"; \
    }

namespace fntest {

inline bool isRoot() {
    return ::geteuid() == 0;
}

struct CommandResult {
    int status = -1;  ///< exit status, or 128 + signal
    std::string out;  ///< standard output
    std::string err;  ///< standard error
};

/// Starts argv with standard input, output and error on these files (opened in the child).
inline pid_t spawn(const std::vector<std::string>& argv, const std::string& in = "/dev/null",
                   const std::string& out = "/dev/null", const std::string& err = "/dev/null") {
    std::vector<char*> args;
    for (const auto& arg : argv) {
        args.push_back(const_cast<char*>(arg.c_str()));
    }
    args.push_back(nullptr);
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(::open(in.c_str(), O_RDONLY), 0);
        ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
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

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

/// Runs argv with `input` on its standard input and waits for it.
inline CommandResult run(const std::vector<std::string>& argv, const std::string& input = "") {
    char directory[] = "/tmp/fntest-XXXXXX";
    if (::mkdtemp(directory) == nullptr) {
        throw std::runtime_error("mkdtemp failed");
    }
    const std::filesystem::path dir = directory;
    std::ofstream(dir / "in", std::ios::binary) << input;
    CommandResult result;
    result.status = waitFor(spawn(argv, dir / "in", dir / "out", dir / "err"));
    result.out = readFile(dir / "out");
    result.err = readFile(dir / "err");
    std::filesystem::remove_all(dir);
    return result;
}

/// The lines of a text, without their line ends.
inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        result.push_back(line);
    }
    return result;
}

/// The blank-separated words of a text.
inline std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

class NetworkNamespace {
public:
    /// Builds the host `host` of tests/data/inet_hosts.tsv, whose comments say how.
    explicit NetworkNamespace(const std::string& host)
        : name_("fnet-" + host + "-" + std::to_string(::getpid())),
          etc_("/etc/netns/" + name_),
          scratch_(std::filesystem::temp_directory_path() / (name_ + ".scratch")) {
        run({"ip", "netns", "del", name_});  // a leftover of a crashed run with a reused pid
        mustRun({"ip", "netns", "add", name_});
        std::filesystem::create_directories(etc_);
        char hostName[256] = {};
        ::gethostname(hostName, sizeof hostName - 1);
        for (const TableRow& row : readTable("inet_hosts.tsv", 3)) {
            if (row.fields[0] != host) {
                continue;
            }
            std::string text = row.fields[2];
            for (const auto& [from, to] :
                 {std::pair<std::string, std::string>{"{scratch}", scratch_},
                  {"{hostname}", hostName}}) {
                if (const auto at = text.find(from); at != std::string::npos) {
                    text.replace(at, from.size(), to);
                }
            }
            const std::string& what = row.fields[1];
            auto argv = words(text);
            if (what == "ip") {
                argv.insert(argv.begin(), {"ip", "-n", name_});
                mustRun(argv);
            } else if (what == "start") {
                argv.insert(argv.begin(), {"ip", "netns", "exec", name_});
                processes_.push_back(spawn(argv));
            } else if (what == "wait") {
                for (int attempt = 0; exec(argv).status != 0; ++attempt) {
                    if (attempt == 100) {
                        throw std::runtime_error(text + " never succeeded in " + name_);
                    }
                    ::usleep(50000);
                }
            } else {
                std::ofstream(what == "scratch" ? scratch_ : (etc_ / what).string(), std::ios::app)
                    << text << '\n';
            }
        }
    }

    ~NetworkNamespace() {
        for (const pid_t pid : processes_) {
            ::kill(pid, SIGTERM);
            waitFor(pid);
        }
        run({"ip", "netns", "del", name_});
        std::error_code ignored;
        std::filesystem::remove_all(etc_, ignored);
        std::filesystem::remove(scratch_, ignored);
    }

    NetworkNamespace(const NetworkNamespace&) = delete;
    NetworkNamespace& operator=(const NetworkNamespace&) = delete;

    /// Runs argv inside the namespace (at most 60 s).
    CommandResult exec(std::vector<std::string> argv) const {
        argv.insert(argv.begin(), {"timeout", "60", "ip", "netns", "exec", name_});
        return run(argv);
    }

    /// Runs this test program's tests that match `filter` inside the namespace.
    CommandResult runInside(const std::string& filter) const {
        return exec({"env", "FNTEST_INSIDE=1", std::filesystem::read_symlink("/proc/self/exe"),
                     "--gtest_filter=" + filter});
    }

private:
    static void mustRun(const std::vector<std::string>& argv) {
        if (const auto result = run(argv); result.status != 0) {
            std::string command;
            for (const auto& word : argv) {
                command += word + " ";
            }
            throw std::runtime_error(command + "failed: " + result.err);
        }
    }

    std::string name_;
    std::filesystem::path etc_;
    std::string scratch_;
    std::vector<pid_t> processes_;
};

}  // namespace fntest
