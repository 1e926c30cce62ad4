// Lines typed at lantern's prompt: line editing and a history on a terminal
// or console, plain lines from a pipe or a file. While it waits for a line
// the message loop runs, so a live browser keeps loading. Each system has its
// own reader.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace qrl {

class LineReader {
 public:
  // `historyFile` keeps the lines typed at a terminal across sessions; an
  // empty path keeps them for this session only.
  explicit LineReader(std::string historyFile);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // The next line without its line end, or nothing at the end of input
  // (Ctrl-D on an empty line). The prompt shows on a terminal only, so that
  // input from a pipe gives output without prompts in it.
  std::optional<std::string> ReadLine(const char* prompt);

  // Where the history goes by default, or an empty path where the system's
  // console keeps the history itself.
  static std::string DefaultHistoryFile();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace qrl
