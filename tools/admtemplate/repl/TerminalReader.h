// Lines that somebody types.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "repl/Completion.h"
#include "repl/EditLibrary.h"
#include "repl/LineReader.h"

namespace commandfilter::tools {

/// Reads from the terminal with a prompt, line editing, a history that is kept in a file, and
/// completion with the Tab key. Ctrl-C gives the line up.
class TerminalReader final : public LineReader {
 public:
  using Complete = std::function<Completion(std::string_view)>;

  /// `history`: the file; none to keep nothing.
  TerminalReader(EditLibrary library, std::optional<std::string> history, Complete complete);
  ~TerminalReader() override;

  std::optional<std::string> nextLine() override;

 private:
  static unsigned char completeWord(EditLine* editor, int key);
  static unsigned char giveUp(EditLine* editor, int key);
  static int readCharacter(EditLine* editor, wchar_t* character);
  static char* prompt(EditLine* editor);

  [[nodiscard]] static TerminalReader* readerOf(EditLine* editor);
  [[nodiscard]] unsigned char offer(const Completion& completion, std::size_t typed);
  void remember(const std::string& line);

  EditLibrary library_;
  std::optional<std::string> historyFile_;
  Complete complete_;
  History* history_ = nullptr;
  EditLine* editor_ = nullptr;
  bool isGivenUp_ = false;
};

}  // namespace commandfilter::tools
