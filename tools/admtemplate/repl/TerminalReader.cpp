#include "repl/TerminalReader.h"

#include <langinfo.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cwchar>
#include <utility>

namespace commandfilter::tools {

namespace {

constexpr int kHistorySize = 1000;

volatile std::sig_atomic_t wasInterrupted = 0;  // NOLINT: a signal handler has nothing else

extern "C" void noteInterrupt(int /*signal*/) { wasInterrupted = 1; }

// While a line is read Ctrl-C is noted; at all other times it ends the program.
class NotedInterrupt {
 public:
  NotedInterrupt() noexcept {
    wasInterrupted = 0;
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    sigaction(SIGINT, &action, &before_);
  }
  NotedInterrupt(const NotedInterrupt&) = delete;
  NotedInterrupt& operator=(const NotedInterrupt&) = delete;
  ~NotedInterrupt() { sigaction(SIGINT, &before_, nullptr); }

 private:
  struct sigaction before_ {};
};

// Waits for something to read; false for Ctrl-C, whenever it comes.
bool waitForKey() noexcept {
  sigset_t interrupt;
  sigset_t before;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, &before);
  pollfd terminal{STDIN_FILENO, POLLIN, 0};
  while (wasInterrupted == 0 && ppoll(&terminal, 1, nullptr, &before) < 0 && errno == EINTR) {
  }
  const bool isKey = wasInterrupted == 0;
  wasInterrupted = 0;
  sigprocmask(SIG_SETMASK, &before, nullptr);
  return isKey;
}

// The editor cuts what is typed into characters by the locale's encoding; texts are UTF-8 here.
void useUTF8() {
  setlocale(LC_CTYPE, "");
  if (std::string_view(nl_langinfo(CODESET)) != "UTF-8") setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace

TerminalReader::TerminalReader(EditLibrary library, std::optional<std::string> history,
                               Complete complete)
    : library_(library), historyFile_(std::move(history)), complete_(std::move(complete)) {
  useUTF8();
  history_ = library_.historyInit();
  HistEvent event{};
  library_.history(history_, &event, H_SETSIZE, kHistorySize);
  library_.history(history_, &event, H_SETUNIQUE, 1);
  if (historyFile_) library_.history(history_, &event, H_LOAD, historyFile_->c_str());
  editor_ = library_.init("admtemplate", stdin, stdout, stderr);
  if (editor_ == nullptr) return;
  library_.set(editor_, EL_CLIENTDATA, this);
  library_.set(editor_, EL_PROMPT, &TerminalReader::prompt);
  library_.set(editor_, EL_EDITOR, "emacs");
  library_.set(editor_, EL_SIGNAL, 1);
  library_.set(editor_, EL_HIST, library_.history, history_);
  library_.set(editor_, EL_ADDFN, "complete", "completes a name", &TerminalReader::completeWord);
  library_.set(editor_, EL_BIND, "^I", "complete", nullptr);
  library_.set(editor_, EL_BIND, "^R", "em-inc-search-prev", nullptr);
  library_.set(editor_, EL_GETCFN, &TerminalReader::readCharacter);
  library_.set(editor_, EL_ADDFN, "give-up", "gives the line up", &TerminalReader::giveUp);
  library_.set(editor_, EL_BIND, "^C", "give-up", nullptr);
  // The user's own bindings.
  library_.source(editor_, nullptr);
}

TerminalReader::~TerminalReader() {
  if (editor_ != nullptr) library_.end(editor_);
  library_.historyEnd(history_);
}

char* TerminalReader::prompt(EditLine* /*editor*/) {
  static std::array<char, 3> text{'>', ' ', '\0'};
  return text.data();
}

std::optional<std::string> TerminalReader::nextLine() {
  if (editor_ == nullptr) return std::nullopt;
  while (true) {
    int length = 0;
    isGivenUp_ = false;
    const char* text = nullptr;
    {
      const NotedInterrupt scope;
      text = library_.gets(editor_, &length);
    }
    if (isGivenUp_) {
      std::fputs("^C\n", stdout);
      continue;
    }
    if (text == nullptr || length <= 0) {
      std::fputs("\n", stdout);
      return std::nullopt;
    }
    std::string line(text, static_cast<std::size_t>(length));
    while (line.ends_with('\n') || line.ends_with('\r')) line.pop_back();
    remember(line);
    return line;
  }
}

void TerminalReader::remember(const std::string& line) {
  if (line.find_first_not_of(" \t") == std::string::npos) return;
  HistEvent event{};
  library_.history(history_, &event, H_ENTER, line.c_str());
  // At once: a terminal may be closed at any time.
  if (historyFile_) library_.history(history_, &event, H_SAVE, historyFile_->c_str());
}

TerminalReader* TerminalReader::readerOf(EditLine* editor) {
  // The editor's functions get nothing but the editor.
  const auto library = EditLibrary::load();
  void* data = nullptr;
  if (!library || library->get(editor, EL_CLIENTDATA, &data) != 0) return nullptr;
  return static_cast<TerminalReader*>(data);
}

unsigned char TerminalReader::completeWord(EditLine* editor, int /*key*/) {
  TerminalReader* reader = readerOf(editor);
  if (reader == nullptr) return CC_ERROR;
  const LineInfo* line = reader->library_.line(editor);
  const std::string text(line->buffer, static_cast<std::size_t>(line->cursor - line->buffer));
  return reader->offer(reader->complete_(text), text.size());
}

unsigned char TerminalReader::giveUp(EditLine* editor, int /*key*/) {
  TerminalReader* reader = readerOf(editor);
  if (reader == nullptr) return CC_ERROR;
  reader->isGivenUp_ = true;
  return CC_NEWLINE;
}

// The editor's own function goes on reading when a signal comes in between.
int TerminalReader::readCharacter(EditLine* /*editor*/, wchar_t* character) {
  std::mbstate_t state{};
  while (true) {
    if (!waitForKey()) {
      constexpr wchar_t kControlC = 3;
      *character = kControlC;
      return 1;
    }
    char byte = '\0';
    const ssize_t count = read(STDIN_FILENO, &byte, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return static_cast<int>(count);
    // What a Ctrl-D becomes that was typed before the line was edited.
    if (byte == '\0') continue;
    const std::size_t used = std::mbrtowc(character, &byte, 1, &state);
    constexpr auto kIncomplete = static_cast<std::size_t>(-2);
    constexpr auto kInvalid = static_cast<std::size_t>(-1);
    if (used == kInvalid) {
      state = {};
    } else if (used != kIncomplete) {
      return 1;
    }
  }
}

unsigned char TerminalReader::offer(const Completion& completion, std::size_t typed) {
  if (completion.words.empty()) return CC_REFRESH_BEEP;
  const std::string common = commonBeginning(completion.words);
  std::string addition = common.substr(std::min(typed - completion.begin, common.size()));
  if (completion.words.size() == 1) addition += completion.closing;
  if (!addition.empty()) {
    library_.insert(editor_, addition.c_str());
    return CC_REFRESH;
  }
  if (completion.words.size() == 1) return CC_REFRESH;
  std::fputs("\n", stdout);
  for (const std::string& word : completion.words) std::printf("%s  ", word.c_str());
  std::fputs("\n", stdout);
  return CC_REDISPLAY;
}

}  // namespace commandfilter::tools
