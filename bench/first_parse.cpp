// What a user waits for when a page is captured: the first parse and release
// of the page in a process that has not parsed anything yet, beside the warm
// figure of the same work repeated in one process. A first parse pays for
// memory the process has never touched (page faults, a heap that has to
// grow), which a benchmark loop pays once and then hides.
//
//   qrlantern_first_parse [--rounds N] [--repeat K] [PAGE.html ...]
//
// With no pages it takes every *.html of the corpus folder (the environment
// variable QRL_CORPUS, else the folder the build was configured with), in
// the order of their names. Every figure comes from a child forked for it by
// a parent that never holds a page, so each child starts with an empty heap.
// The engine's warnings about broken markup are dropped.
//
// One row per page:
//   bytes              the page's size (K copies of the file with --repeat K)
//   first best/median  one parse and release in a new child, over N children
//                      (N = --rounds, 7 unless told, 5 at least)
//   warm best          the best of 20 parses and releases in one child
//   first/warm         how many times slower a capture is than the warm loop
//                      says; this is the number to watch
//   peak RSS MB        the largest peak resident size of the first-round
//                      children, the page's own bytes included
//   minor faults       the median count of minor page faults within a first
//                      round's timing: fresh memory the parse had to touch
// The last row, "sequence", parses all the pages in turn as a run of
// captures does (each document replaces the previous one), 5 passes in one
// child: its warm column is the best full pass, and its peak RSS includes
// every page's bytes, all read before the first pass.
//
// --repeat K puts K copies of a file end to end in one page, to see how the
// first parse scales: --repeat 13 makes code.html a page of about 100 MB.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "html/html_parser.h"

#ifndef QRL_CORPUS_DIR
#define QRL_CORPUS_DIR ""
#endif

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

constexpr int kDefaultRounds = 7;
constexpr int kFewestRounds = 5;
constexpr int kWarmRounds = 20;
constexpr int kSequencePasses = 5;

struct Options {
  int rounds = kDefaultRounds;
  std::uint32_t repeat = 1;
  std::vector<fs::path> pages;
};

// What a child writes to its pipe. Parent and child are the same program, so
// the struct goes through as it lies in memory.
struct ChildReport {
  double micros = 0;
  std::int64_t peakRssKb = 0;
  std::int64_t minorFaults = 0;
};

struct PageRow {
  std::string name;
  std::uint64_t bytes = 0;
  double firstBestMs = 0;
  double firstMedianMs = 0;
  double warmBestMs = 0;
  double peakRssMb = 0;
  std::int64_t minorFaults = 0;
};

// ---- Failing --------------------------------------------------------------

[[noreturn]] void Fail(const std::string& message) {
  std::fflush(stdout);
  std::fprintf(stderr, "qrlantern_first_parse: %s\n", message.c_str());
  std::exit(1);
}

// A child must not run the parent's exit handlers or flush the stdout buffer
// it inherited, which would print the parent's pending lines twice.
[[noreturn]] void FailInChild(const std::string& message) {
  std::fprintf(stderr, "qrlantern_first_parse: %s\n", message.c_str());
  _exit(1);
}

[[noreturn]] void FailWithUsage(const std::string& message) {
  std::fprintf(stderr, "qrlantern_first_parse: %s\n", message.c_str());
  std::fprintf(stderr, "usage: qrlantern_first_parse [--rounds N] [--repeat K] [PAGE.html ...]\n");
  std::exit(2);
}

// ---- Options and pages ----------------------------------------------------

long ParseCount(std::string_view option, const char* text, long fewest, long most) {
  const std::string_view digits(text);
  long value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size() || value < fewest || value > most) {
    FailWithUsage(std::string(option) + " wants a whole number from " + std::to_string(fewest) + " to " +
                  std::to_string(most) + ", not \"" + std::string(digits) + "\"");
  }
  return value;
}

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument(argv[i]);
    if ((argument == "--rounds" || argument == "--repeat") && i + 1 < argc) {
      const char* value = argv[++i];
      if (argument == "--rounds") {
        options.rounds = static_cast<int>(ParseCount(argument, value, kFewestRounds, 1000));
      } else {
        options.repeat = static_cast<std::uint32_t>(ParseCount(argument, value, 1, 100000));
      }
    } else if (argument.starts_with("-")) {
      FailWithUsage("unknown or incomplete option " + std::string(argument));
    } else {
      options.pages.emplace_back(argument);
    }
  }
  return options;
}

fs::path CorpusFolder() {
  if (const char* fromEnvironment = std::getenv("QRL_CORPUS")) return fromEnvironment;
  return QRL_CORPUS_DIR;
}

std::vector<fs::path> CorpusPages(const fs::path& folder) {
  std::vector<fs::path> pages;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".html") pages.push_back(entry.path());
  }
  std::sort(pages.begin(), pages.end(),
            [](const fs::path& a, const fs::path& b) { return a.filename() < b.filename(); });
  return pages;
}

// The engine takes 32-bit lengths, and a 32-bit build's strings stop well
// before that.
bool RepeatedSizeFits(std::uint64_t fileBytes, std::uint32_t repeat) {
  const std::uint64_t limit =
      std::min<std::uint64_t>(std::numeric_limits<std::uint32_t>::max() - 1, std::string().max_size());
  return fileBytes <= limit / repeat;
}

std::string PageName(const fs::path& page, std::uint32_t repeat) {
  std::string name = page.stem().string();
  if (repeat > 1) name += "*" + std::to_string(repeat);
  return name;
}

// Checked in the parent for every page before the table begins, so that a
// bad page stops the run with a clear message rather than a failed child.
std::uint64_t PageBytes(const fs::path& page, std::uint32_t repeat) {
  const int file = open(page.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) Fail("cannot read " + page.string() + ": " + std::strerror(errno));
  struct stat status {};
  const bool regular = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  close(file);
  if (!regular) Fail("cannot read " + page.string() + ": not a regular file");
  const auto fileBytes = static_cast<std::uint64_t>(status.st_size);
  if (!RepeatedSizeFits(fileBytes, repeat)) Fail(page.string() + " repeated is too large for one parse");
  return fileBytes * repeat;
}

// ---- Work done in the children --------------------------------------------

bool ReadFully(int file, void* buffer, std::size_t size) {
  auto* bytes = static_cast<char*>(buffer);
  while (size > 0) {
    const ssize_t got = read(file, bytes, size);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    bytes += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

bool WriteFully(int file, const void* buffer, std::size_t size) {
  const auto* bytes = static_cast<const char*>(buffer);
  while (size > 0) {
    const ssize_t put = write(file, bytes, size);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    bytes += put;
    size -= static_cast<std::size_t>(put);
  }
  return true;
}

// The page as a capture holds it: one string, sized once and read into
// place, with the file's bytes `repeat` times end to end. The string's own
// NUL is the readable byte the parser wants behind the input.
std::string ReadPageInChild(const fs::path& page, std::uint32_t repeat) {
  const int file = open(page.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (file < 0 || fstat(file, &status) != 0) {
    FailInChild("cannot read " + page.string() + ": " + std::strerror(errno));
  }
  const auto fileBytes = static_cast<std::uint64_t>(status.st_size);
  if (!RepeatedSizeFits(fileBytes, repeat)) FailInChild(page.string() + " repeated is too large for one parse");
  const auto size = static_cast<std::size_t>(fileBytes);
  std::string bytes;
  bytes.resize(size * repeat);
  if (!ReadFully(file, bytes.data(), size)) FailInChild("cannot read " + page.string() + ": short read");
  close(file);
  for (std::uint32_t copy = 1; copy < repeat; ++copy) std::memcpy(bytes.data() + copy * size, bytes.data(), size);
  return bytes;
}

// Once the pages are read, so that a read error still shows.
void DropEngineWarnings() {
  const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (null < 0) return;
  dup2(null, STDERR_FILENO);
  close(null);
}

struct Usage {
  std::int64_t peakRssKb;
  std::int64_t minorFaults;
};

Usage CurrentUsage() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return {usage.ru_maxrss, usage.ru_minflt};
}

double MicrosSince(Clock::time_point start) {
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

// What a capture does with a page: a parser for it, its document, and both
// gone at the end. The parser's `root` holds the tree as well, so the tree
// is released only when the parser dies too.
void ParseAndRelease(const std::string& page) {
  qrl::HtmlParser parser;
  const qrl::DocumentRef document = parser.Parse(page.c_str(), static_cast<std::uint32_t>(page.size()));
}

ChildReport TimeFirstParse(const std::string& page) {
  const Usage before = CurrentUsage();
  const Clock::time_point start = Clock::now();
  ParseAndRelease(page);
  const double micros = MicrosSince(start);
  const Usage after = CurrentUsage();
  return {micros, after.peakRssKb, after.minorFaults - before.minorFaults};
}

ChildReport TimeWarmParses(const std::string& page) {
  double best = std::numeric_limits<double>::infinity();
  for (int round = 0; round < kWarmRounds; ++round) {
    const Clock::time_point start = Clock::now();
    ParseAndRelease(page);
    best = std::min(best, MicrosSince(start));
  }
  return {best, CurrentUsage().peakRssKb, 0};
}

// A new parser per page, and the previous document kept until the next parse
// has returned, as a capture replaces the current document: for a moment
// both trees are alive. The last document is released within the pass, so
// that every pass does the same work.
double TimeSequencePass(const std::vector<std::string>& pages) {
  const Clock::time_point start = Clock::now();
  qrl::DocumentRef current;
  for (const std::string& page : pages) {
    qrl::HtmlParser parser;
    qrl::DocumentRef next = parser.Parse(page.c_str(), static_cast<std::uint32_t>(page.size()));
    current = std::move(next);
  }
  current.reset();
  return MicrosSince(start);
}

ChildReport TimeSequence(const std::vector<std::string>& pages) {
  double best = std::numeric_limits<double>::infinity();
  for (int pass = 0; pass < kSequencePasses; ++pass) best = std::min(best, TimeSequencePass(pages));
  return {best, CurrentUsage().peakRssKb, 0};
}

// ---- Children -------------------------------------------------------------

std::string DescribeExit(int status) {
  if (WIFSIGNALED(status)) return "killed by signal " + std::to_string(WTERMSIG(status));
  return "exit status " + std::to_string(WEXITSTATUS(status));
}

// Runs `measure` in a child of its own and returns its report; a child that
// fails (an unreadable page, no memory left) stops the whole run.
template <typename Measure>
ChildReport RunInChild(const std::string& what, Measure measure) {
  int ends[2];
  if (pipe(ends) != 0) Fail(std::string("pipe: ") + std::strerror(errno));
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) Fail(std::string("fork: ") + std::strerror(errno));
  if (child == 0) {
    close(ends[0]);
    try {
      const ChildReport report = measure();
      _exit(WriteFully(ends[1], &report, sizeof report) ? 0 : 1);
    } catch (const std::exception& error) {
      FailInChild(what + ": " + error.what());
    } catch (...) {
      FailInChild(what + ": an exception");
    }
  }
  close(ends[1]);
  ChildReport report;
  const bool received = ReadFully(ends[0], &report, sizeof report);
  close(ends[0]);
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) Fail(std::string("waitpid: ") + std::strerror(errno));
  }
  if (!received || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    Fail("the child measuring " + what + " failed (" + DescribeExit(status) + ")");
  }
  return report;
}

ChildReport MeasureFirstParse(const fs::path& page, std::uint32_t repeat) {
  return RunInChild("the first parse of " + page.string(), [&] {
    const std::string bytes = ReadPageInChild(page, repeat);
    DropEngineWarnings();
    return TimeFirstParse(bytes);
  });
}

ChildReport MeasureWarmParses(const fs::path& page, std::uint32_t repeat) {
  return RunInChild("the warm parses of " + page.string(), [&] {
    const std::string bytes = ReadPageInChild(page, repeat);
    DropEngineWarnings();
    return TimeWarmParses(bytes);
  });
}

ChildReport MeasureSequence(const std::vector<fs::path>& pages, std::uint32_t repeat) {
  return RunInChild("the sequence of pages", [&] {
    std::vector<std::string> bytes;
    bytes.reserve(pages.size());
    for (const fs::path& page : pages) bytes.push_back(ReadPageInChild(page, repeat));
    DropEngineWarnings();
    return TimeSequence(bytes);
  });
}

// ---- Figures and the table ------------------------------------------------

template <typename Number>
double Median(std::vector<Number> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  if (values.size() % 2 == 1) return static_cast<double>(values[middle]);
  return (static_cast<double>(values[middle - 1]) + static_cast<double>(values[middle])) / 2;
}

double KbToMb(std::int64_t kb) { return static_cast<double>(kb) / 1024; }

PageRow MeasurePage(const fs::path& page, const Options& options) {
  PageRow row{PageName(page, options.repeat), PageBytes(page, options.repeat)};
  std::vector<double> firstMicros;
  std::vector<std::int64_t> minorFaults;
  std::int64_t peakRssKb = 0;
  for (int round = 0; round < options.rounds; ++round) {
    const ChildReport first = MeasureFirstParse(page, options.repeat);
    firstMicros.push_back(first.micros);
    minorFaults.push_back(first.minorFaults);
    peakRssKb = std::max(peakRssKb, first.peakRssKb);
  }
  row.firstBestMs = *std::min_element(firstMicros.begin(), firstMicros.end()) / 1000;
  row.firstMedianMs = Median(firstMicros) / 1000;
  row.warmBestMs = MeasureWarmParses(page, options.repeat).micros / 1000;
  row.peakRssMb = KbToMb(peakRssKb);
  row.minorFaults = static_cast<std::int64_t>(Median(minorFaults));
  return row;
}

int NameWidth(const std::vector<fs::path>& pages, std::uint32_t repeat) {
  std::size_t width = std::string_view("sequence").size();
  for (const fs::path& page : pages) width = std::max(width, PageName(page, repeat).size());
  return static_cast<int>(width);
}

void PrintHeader(int nameWidth) {
  std::printf("%-*s %12s %14s %16s %13s %11s %12s %13s\n", nameWidth, "page", "bytes", "first best ms",
              "first median ms", "warm best ms", "first/warm", "peak RSS MB", "minor faults");
}

void PrintPageRow(int nameWidth, const PageRow& row) {
  std::printf("%-*s %12llu %14.3f %16.3f %13.3f %11.2f %12.1f %13lld\n", nameWidth, row.name.c_str(),
              static_cast<unsigned long long>(row.bytes), row.firstBestMs, row.firstMedianMs, row.warmBestMs,
              row.firstBestMs / row.warmBestMs, row.peakRssMb, static_cast<long long>(row.minorFaults));
  std::fflush(stdout);
}

void PrintSequenceRow(int nameWidth, std::uint64_t bytes, const ChildReport& sequence) {
  std::printf("%-*s %12llu %14s %16s %13.3f %11s %12.1f %13s\n", nameWidth, "sequence",
              static_cast<unsigned long long>(bytes), "-", "-", sequence.micros / 1000, "-", KbToMb(sequence.peakRssKb),
              "-");
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  Options options = ParseOptions(argc, argv);
  if (options.pages.empty()) {
    const fs::path folder = CorpusFolder();
    options.pages = CorpusPages(folder);
    if (options.pages.empty()) {
      std::printf("no corpus pages (*.html) in \"%s\"; set QRL_CORPUS to their folder\n", folder.c_str());
      return 0;
    }
  }

  std::uint64_t allBytes = 0;
  for (const fs::path& page : options.pages) allBytes += PageBytes(page, options.repeat);
  const int nameWidth = NameWidth(options.pages, options.repeat);
  PrintHeader(nameWidth);
  for (const fs::path& page : options.pages) PrintPageRow(nameWidth, MeasurePage(page, options));
  PrintSequenceRow(nameWidth, allBytes, MeasureSequence(options.pages, options.repeat));
  return 0;
}
