#include "Runner.h"

#include <unistd.h>

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/monotonic_resource.hpp>
#include <boost/json/serializer.hpp>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <memory>
#include <system_error>
#include <thread>

#include "Json.h"
#include "Text.h"

namespace fnet {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Standard input is read in blocks of up to this size (a pipe gives what it holds at once).
constexpr std::size_t kReadSize = std::size_t{1} << 20;

void put(std::FILE* stream, const std::string& text) {
    if (!text.empty()) {
        std::fwrite(text.data(), 1, text.size(), stream);
    }
}

void appendJson(std::string& out, boost::json::serializer& serializer,
                const boost::json::object& record) {
    char buffer[4096];
    serializer.reset(&record);
    while (!serializer.done()) {
        const auto part = serializer.read(buffer, sizeof buffer);
        out.append(part.data(), part.size());
    }
    out += '\n';
}

// The record's keys in their places, every value null: the command's handler fills them in.
void prepareRecord(boost::json::object& record, const RecordKeys& keys) {
    record.reserve(keys.size() + 2);
    for (const char* key : keys) {
        record.emplace(key, nullptr);
    }
    record.emplace("error", nullptr);
}

// One thread's share of the work: its handler, the memory its records are built in (reused
// from input to input), and what it wrote for its share of the current block.
struct Worker {
    Handler handler;
    alignas(16) unsigned char memory[std::size_t{64} << 10];
    boost::json::serializer serializer;
    std::string out;
    std::string err;
    bool failed = false;
};

class Engine {
public:
    Engine(const Cli& cli, const RecordKeys& keys, const std::function<Handler()>& makeHandler,
           InputShape shape)
        : cli_(cli),
          keys_(keys),
          makeHandler_(makeHandler),
          group_(shape.group),
          perThread_(shape.perThread),
          interactive_(::isatty(STDOUT_FILENO) == 1),
          maxWorkers_(interactive_ ? 1 : cli.jobs()) {}

    // Hands inputs over in order; pairs may straddle calls.
    void feed(std::span<const std::string_view> inputs) {
        if (group_ == 1) {
            process(inputs);
            return;
        }
        items_.clear();
        if (pending_) {
            items_.emplace_back(*pending_);
        }
        items_.insert(items_.end(), inputs.begin(), inputs.end());
        std::optional<std::string> next;
        if (items_.size() % group_ != 0) {
            next.emplace(items_.back());
            items_.pop_back();
        }
        process(items_);
        pending_ = std::move(next);
    }

    void readStandardInput() {
        // Grown only when a line outgrows it, never cleared: a read of a few bytes (a person
        // typing, a producer writing line by line) costs a few bytes.
        std::vector<char> buffer(kReadSize);
        std::size_t used = 0;
        std::size_t scanned = 0;  // no newline before this offset
        bool atStart = true;
        std::vector<std::string_view> lines;
        for (;;) {
            if (used == buffer.size()) {
                buffer.resize(buffer.size() * 2);
            }
            const ssize_t got = ::read(STDIN_FILENO, buffer.data() + used, buffer.size() - used);
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got < 0) {
                throw std::system_error(errno, std::system_category(), "reading standard input");
            }
            used += static_cast<std::size_t>(got);
            const bool end = got == 0;
            std::string_view text(buffer.data(), used);
            if (atStart) {
                const std::string_view head = text.substr(0, 3);
                if (!end && head.size() < 3 && kByteOrderMark.substr(0, head.size()) == head) {
                    continue;  // perhaps the start of a byte-order mark
                }
                if (head == kByteOrderMark) {
                    text.remove_prefix(3);
                }
                atStart = false;
            }
            lines.clear();
            std::size_t start = 0;
            for (std::size_t newline = text.find('\n', scanned); newline != std::string::npos;
                 newline = text.find('\n', start)) {
                lines.push_back(line(text.substr(start, newline - start)));
                start = newline + 1;
            }
            if (end && start < text.size()) {
                lines.push_back(line(text.substr(start)));
                start = text.size();
            }
            feed(lines);
            // The unfinished line moves to the front.
            const std::size_t consumed =
                static_cast<std::size_t>(text.data() - buffer.data()) + start;
            std::copy(buffer.begin() + static_cast<std::ptrdiff_t>(consumed),
                      buffer.begin() + static_cast<std::ptrdiff_t>(used), buffer.begin());
            used -= consumed;
            scanned = used;
            if (end) {
                return;
            }
        }
    }

    bool failed() const { return failed_; }
    bool unpaired() const { return pending_.has_value(); }

private:
    static std::string_view line(std::string_view text) {
        if (!text.empty() && text.back() == '\r') {
            text.remove_suffix(1);
        }
        return text;
    }

    void process(std::span<const std::string_view> items) {
        const std::size_t count = items.size() / group_;
        if (count == 0) {
            return;
        }
        const std::size_t workers =
            std::clamp<std::size_t>(count / perThread_, 1, interactive_ ? 1 : maxWorkers_);
        while (workers_.size() < workers) {  // made here, never on a worker thread
            workers_.push_back(std::make_unique<Worker>());
            workers_.back()->handler = makeHandler_();
        }
        if (interactive_) {  // a person reads along: each result as soon as it is known
            for (std::size_t i = 0; i < count; ++i) {
                runShare(0, items.subspan(i * group_, group_));
                flush(1);
            }
            return;
        }
        const std::size_t per = (count + workers - 1) / workers;
        const auto share = [&](std::size_t w) {
            const std::size_t first = std::min(count, w * per);
            const std::size_t last = std::min(count, first + per);
            return items.subspan(first * group_, (last - first) * group_);
        };
        std::vector<std::thread> threads;
        for (std::size_t w = 1; w < workers; ++w) {
            threads.emplace_back([this, w, part = share(w)] { runShare(w, part); });
        }
        runShare(0, share(0));
        for (auto& thread : threads) {
            thread.join();
        }
        flush(workers);
    }

    void runShare(std::size_t index, std::span<const std::string_view> items) {
        Worker& worker = *workers_[index];
        for (std::size_t i = 0; i + group_ <= items.size(); i += group_) {
            const auto one = items.subspan(i, group_);
            {
                // Fresh each time: its blocks beyond the buffer go back when it does.
                boost::json::monotonic_resource memory(worker.memory, sizeof worker.memory);
                Outcome outcome{boost::json::storage_ptr(&memory)};
                if (cli_.json()) {
                    setInput(outcome.keys, one);
                    prepareRecord(outcome.keys, keys_);
                }
                try {
                    worker.handler(one, outcome);
                } catch (const std::exception& e) {
                    outcome.fail(e.what());
                }
                record(worker, one, outcome);
            }
        }
    }

    void setInput(boost::json::object& record, std::span<const std::string_view> items) const {
        if (group_ == 1 && isUtf8(items[0])) {
            record.emplace("input", items[0]);
            return;
        }
        if (group_ == 1) {
            record.emplace("input", jsonSafe(items[0]));
            return;
        }
        boost::json::array& all = record["input"].emplace_array();
        for (const std::string_view item : items) {
            all.emplace_back(jsonSafe(item));
        }
    }

    void record(Worker& worker, std::span<const std::string_view> items, Outcome& outcome) {
        if (outcome.failed()) {
            worker.failed = true;
            std::string subject;
            const auto quote = [&](std::string_view text) {
                subject += (subject.empty() ? "'" : " '") + printable(text) + "'";
            };
            if (outcome.subject) {
                quote(*outcome.subject);
            } else {
                std::for_each(items.begin(), items.end(), quote);
            }
            worker.err +=
                "fnet " + cli_.command() + ": " + subject + ": " + printable(outcome.error) + "\n";
        }
        if (!cli_.json()) {
            worker.out += outcome.text;
            return;
        }
        if (outcome.failed()) {
            outcome.keys["error"] = jsonSafe(outcome.error);
        }
        appendJson(worker.out, worker.serializer, outcome.keys);
    }

    void flush(std::size_t workers) {
        for (std::size_t w = 0; w < workers; ++w) {
            Worker& worker = *workers_[w];
            put(stdout, worker.out);
            put(stderr, worker.err);
            failed_ = failed_ || worker.failed;
            worker.out.clear();
            worker.err.clear();
            worker.failed = false;
        }
        std::fflush(stdout);
    }

    const Cli& cli_;
    const RecordKeys& keys_;
    const std::function<Handler()>& makeHandler_;
    const std::size_t group_;
    const std::size_t perThread_;
    const bool interactive_;
    const std::size_t maxWorkers_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::vector<std::string_view> items_;
    std::optional<std::string> pending_;
    bool failed_ = false;
};

}  // namespace

int runInputs(const Cli& cli, std::size_t from, const RecordKeys& keys,
              const std::function<Handler()>& makeHandler, InputShape shape) {
    Engine engine(cli, keys, makeHandler, shape);
    std::vector<std::string_view> given;
    const auto& arguments = cli.arguments();
    for (std::size_t i = from; i <= arguments.size(); ++i) {
        if (i < arguments.size() && arguments[i] != "-") {
            given.emplace_back(arguments[i]);
            continue;
        }
        engine.feed(given);
        given.clear();
        if (i < arguments.size()) {
            engine.readStandardInput();
        }
    }
    if (engine.unpaired()) {
        return cli.usageError("needs inputs in pairs; the last one has no partner");
    }
    return engine.failed() ? kExitFailed : kExitOk;
}

int writeOutcome(const Cli& cli, const RecordKeys& keys, const Outcome& outcome,
                 const std::optional<std::string>& input) {
    std::string out = outcome.text;
    if (cli.json()) {
        boost::json::object record;
        if (input) {
            record.emplace("input", jsonSafe(*input));
        }
        prepareRecord(record, keys);
        for (const auto& [key, value] : outcome.keys) {
            record[key] = value;
        }
        if (outcome.failed()) {
            record["error"] = jsonSafe(outcome.error);
        }
        out.clear();
        boost::json::serializer serializer;
        appendJson(out, serializer, record);
    }
    put(stdout, out);
    std::fflush(stdout);
    if (outcome.failed()) {
        cli.error(printable(outcome.error));
    }
    return outcome.failed() ? kExitFailed : kExitOk;
}

}  // namespace fnet
