// libedit, loaded when there is somebody to type.
#pragma once

#include <histedit.h>

#include <optional>

#include "runtime/SharedLibrary.h"

namespace commandfilter::tools {

/// The functions of libedit that the prompt calls. The program is not linked with it: the other
/// subcommands would pay for loading it.
class EditLibrary {
 public:
  /// None when it is not installed.
  [[nodiscard]] static std::optional<EditLibrary> load();

  decltype(&el_init) init;
  decltype(&el_end) end;
  decltype(&el_set) set;
  decltype(&el_get) get;
  decltype(&el_gets) gets;
  decltype(&el_line) line;
  decltype(&el_insertstr) insert;
  decltype(&el_source) source;
  decltype(&history_init) historyInit;
  decltype(&history_end) historyEnd;
  decltype(&::history) history;

 private:
  friend class commandfilter::SharedLibrary;

  explicit EditLibrary(const SharedLibrary& library);
  [[nodiscard]] bool isComplete() const noexcept;
};

}  // namespace commandfilter::tools
