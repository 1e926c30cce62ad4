// Lines typed at lantern's prompt: line editing and a history on a terminal,
// plain lines from a pipe or a file. While it waits for a line the message
// loop runs (see input_wait.h).
#pragma once

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

  // Where the history goes by default: $LANTERN_HISTORY when it is set (an
  // empty value keeps none), otherwise ~/.lantern_history.
  static std::string DefaultHistoryFile();

 private:
  std::optional<std::string> ReadEditedLine(const char* prompt);
  std::optional<std::string> ReadPlainLine();

  bool terminal_;
  std::string historyFile_;
  std::string pending_;  // bytes of a pipe read beyond the line handed out
  bool endOfInput_ = false;
};

}  // namespace qrl
