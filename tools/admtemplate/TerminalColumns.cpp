#include "TerminalColumns.h"

#include <clocale>
#include <cwchar>

#include "runtime/UTF8.h"

namespace commandfilter::tools {

namespace {

// While it lives, the C library knows all characters, whatever the user's locale. Where that locale
// is not installed, each character counts as one column.
class UnicodeLocale {
 public:
  UnicodeLocale()
      : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{})),
        before_(locale_ != locale_t{} ? uselocale(locale_) : locale_t{}) {}
  UnicodeLocale(const UnicodeLocale&) = delete;
  UnicodeLocale& operator=(const UnicodeLocale&) = delete;
  ~UnicodeLocale() {
    if (locale_ == locale_t{}) return;
    uselocale(before_);
    freelocale(locale_);
  }

 private:
  locale_t locale_;
  locale_t before_;
};

}  // namespace

std::size_t terminalColumns(std::string_view text) {
  if (isASCII(text)) return text.size();
  const UnicodeLocale locale;
  std::size_t columns = 0;
  for (std::size_t offset = 0; offset < text.size();) {
    const int width = wcwidth(static_cast<wchar_t>(nextCodePoint(text, offset)));
    columns += width < 0 ? 1U : static_cast<std::size_t>(width);
  }
  return columns;
}

}  // namespace commandfilter::tools
