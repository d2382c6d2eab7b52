#include "repl/EditLibrary.h"

namespace commandfilter::tools {

namespace {

constexpr SystemLibrary kLibedit{"libedit.so.2"};

}  // namespace

EditLibrary::EditLibrary(const SharedLibrary& library)
    : init(library.function<decltype(init)>("el_init")),
      end(library.function<decltype(end)>("el_end")),
      set(library.function<decltype(set)>("el_set")),
      get(library.function<decltype(get)>("el_get")),
      gets(library.function<decltype(gets)>("el_gets")),
      line(library.function<decltype(line)>("el_line")),
      insert(library.function<decltype(insert)>("el_insertstr")),
      source(library.function<decltype(source)>("el_source")),
      historyInit(library.function<decltype(historyInit)>("history_init")),
      historyEnd(library.function<decltype(historyEnd)>("history_end")),
      history(library.function<decltype(history)>("history")) {}

bool EditLibrary::isComplete() const noexcept {
  return init != nullptr && end != nullptr && set != nullptr && get != nullptr && gets != nullptr &&
         line != nullptr && insert != nullptr && source != nullptr && historyInit != nullptr &&
         historyEnd != nullptr && history != nullptr;
}

std::optional<EditLibrary> EditLibrary::load() {
  return SharedLibrary::functionsOf<EditLibrary>(kLibedit);
}

}  // namespace commandfilter::tools
