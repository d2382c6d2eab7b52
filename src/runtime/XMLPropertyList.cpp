#include "runtime/XMLPropertyList.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Dictionary.h"
#include "runtime/PropertyList.h"
#include "runtime/SharedKeys.h"
#include "runtime/String.h"
#include "runtime/XMLScalar.h"

namespace commandfilter::detail {

namespace {

enum class Element : std::uint8_t {
  None,
  Key,
  String,
  Dictionary,
  Array,
  Integer,
  Real,
  Date,
  Data,
  True,
  False,
  List,
};

struct ElementName {
  std::string_view name;
  Element element;
};

// Common ones first.
constexpr std::array kElements{
    ElementName{"key", Element::Key},         ElementName{"string", Element::String},
    ElementName{"dict", Element::Dictionary}, ElementName{"integer", Element::Integer},
    ElementName{"array", Element::Array},     ElementName{"true", Element::True},
    ElementName{"false", Element::False},     ElementName{"real", Element::Real},
    ElementName{"data", Element::Data},       ElementName{"date", Element::Date},
    ElementName{"plist", Element::List},
};

bool isCollection(Element element) {
  return element == Element::Dictionary || element == Element::Array;
}

Element elementNamed(std::string_view name) {
  const auto* found = std::ranges::find(kElements, name, &ElementName::name);
  return found != kElements.end() ? found->element : Element::None;
}

// Follows the parser through the list. What is complete waits on one stack for the collection
// around it: its elements, or its keys and values by turns.
class Reader {
 public:
  explicit Reader(PropertyListObserver* observer)
      : parser_(XML_ParserCreate("UTF-8")), observer_(observer) {
    if (!parser_) throw std::bad_alloc();
    constexpr std::size_t kUsualDepth = 16;
    constexpr std::size_t kUsualValues = 64;
    open_.reserve(kUsualDepth);
    open_.push_back({Element::List, 0});
    complete_.reserve(kUsualValues);
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const XML_Char* name, const XML_Char** /*attributes*/) {
          static_cast<Reader*>(self)->begin(name);
        },
        [](void* self, const XML_Char* /*name*/) { static_cast<Reader*>(self)->end(); });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int length) {
      static_cast<Reader*>(self)->append({text, static_cast<std::size_t>(length)});
    });
    XML_SetStartDoctypeDeclHandler(
        parser_.get(), [](void* self, const XML_Char* /*name*/, const XML_Char* /*system*/,
                          const XML_Char* /*public*/, int declares) {
          if (declares == 0) return;
          static_cast<Reader*>(self)->refuse("declarations in the document type");
        });
    // A document type elsewhere, which is never fetched, may declare any entity.
    XML_SetSkippedEntityHandler(parser_.get(),
                                [](void* self, const XML_Char* /*name*/, int /*isParameter*/) {
                                  static_cast<Reader*>(self)->refuse(kUndefinedEntity);
                                });
  }

  Result<Value> read(std::string_view text) {
    const int size = static_cast<int>(text.size());
    if (XML_Parse(parser_.get(), text.data(), size, XML_TRUE) != XML_STATUS_OK) {
      return Failure{isRefused() ? place_ + reason_ : here() + parserReason()};
    }
    return std::move(complete_.front());
  }

 private:
  // A collection that is open, the whole list first, and where its content begins.
  struct Open {
    Element element;
    std::size_t first;
  };
  struct FreeParser {
    void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
  };

  static constexpr const char* kUndefinedEntity =
      "undefined entity; only &amp; &lt; &gt; &quot; and &apos; are defined";

  [[nodiscard]] const char* parserReason() const {
    const XML_Error error = XML_GetErrorCode(parser_.get());
    if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    return error == XML_ERROR_UNDEFINED_ENTITY ? kUndefinedEntity : XML_ErrorString(error);
  }
  [[nodiscard]] std::size_t placeOfEvent() const {
    return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
  }
  [[nodiscard]] std::size_t placeBehindEvent() const {
    return placeOfEvent() + static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
  }
  [[nodiscard]] std::string here() const {
    return "line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ", column " +
           std::to_string(XML_GetCurrentColumnNumber(parser_.get()) + 1) + ": ";
  }

  // The parser may still tell of one element after this.
  void refuse(std::string reason) {
    if (isRefused()) return;
    place_ = here();
    reason_ = std::move(reason);
    XML_StopParser(parser_.get(), XML_FALSE);
  }
  [[nodiscard]] bool isRefused() const { return !place_.empty(); }

  [[nodiscard]] std::size_t contentOfOpen() const { return complete_.size() - open_.back().first; }
  [[nodiscard]] bool wantsKey() const {
    return open_.back().element == Element::Dictionary && contentOfOpen() % 2 == 0;
  }

  void begin(std::string_view name) {
    if (isRefused()) return;
    const Element element = elementNamed(name);
    if (const std::string reason = objectionTo(element, name); !reason.empty()) {
      refuse(reason);
    } else if (element == Element::List) {
      isInList_ = true;
    } else if (isCollection(element)) {
      open_.push_back({element, complete_.size()});
      if (observer_ != nullptr) tellOf(PropertyListObserver::Part::Collection);
    } else {
      leaf_ = element;
      text_.clear();
      if (observer_ != nullptr) {
        using enum PropertyListObserver::Part;
        tellOf(element == Element::Key ? Key : Scalar);
      }
    }
  }
  void tellOf(PropertyListObserver::Part part) { observer_->begin(part, placeBehindEvent()); }

  // Why the element may not stand here; empty when it may.
  std::string objectionTo(Element element, std::string_view name) {
    if (element == Element::None) {
      constexpr std::size_t kLongestName = 40;
      if (name.size() > kLongestName) return "an element that no property list has";
      return "no property list has <" + std::string(name) + '>';
    }
    const auto isMisplaced = [this, element] {
      if (leaf_ != Element::None) return true;
      if (element == Element::List) return isInList_ || open_.size() > 1;
      return open_.back().element == Element::Dictionary ? wantsKey() != (element == Element::Key)
                                                         : element == Element::Key;
    };
    if (isMisplaced()) return misplaced(name);
    if (open_.size() == 1 && !complete_.empty()) return "a second value beside the first";
    if (++elements_ > kPropertyListValues) return "it holds too many values";
    if (isCollection(element) && open_.size() > kPropertyListDepth) {
      return "its collections are nested too deeply";
    }
    return {};
  }

  [[nodiscard]] std::string misplaced(std::string_view name) const {
    std::string found = "<";
    found.append(name).append("> ");
    if (leaf_ != Element::None) return found + "inside of a value";
    if (wantsKey()) return found + "where a <key> must stand";
    return found + "where a value must stand";
  }

  void append(std::string_view text) {
    if (isRefused()) return;
    if (leaf_ != Element::None && leaf_ != Element::True && leaf_ != Element::False) {
      text_.append(text);
      if (observer_ != nullptr) observer_->append(text, placeOfEvent());
      // XML has no control characters but white space.
    } else if (!std::ranges::all_of(text, [](unsigned char c) { return c <= ' '; })) {
      refuse("text outside of an element that may hold it");
    }
  }

  void end() {
    if (isRefused()) return;
    if (leaf_ != Element::None) {
      complete_.push_back(leafValue());
      leaf_ = Element::None;
    } else if (open_.size() > 1) {
      endCollection();
    } else if (complete_.empty()) {
      return refuse("a property list without a value");
    } else {
      return;
    }
    if (observer_ != nullptr && !isRefused()) observer_->end(placeOfEvent());
  }

  // nil, and the list is refused, when the text is none of its kind.
  Value leafValue() {
    switch (leaf_) {
      case Element::Key:
        return sharedKeys_.key(text_);
      case Element::String:
        return String::create(text_);
      case Element::True:
        return Value::boolean(true);
      case Element::False:
        return Value::boolean(false);
      case Element::Integer:
        if (const auto number = integerFromXML(text_)) return *number;
        refuse("an <integer> must be a whole number of 64 bits");
        return {};
      case Element::Real:
        if (const auto number = realFromXML(text_)) return Number::real(*number);
        refuse("a <real> must be a number such as 1.5, within the range of reals");
        return {};
      case Element::Date:
        if (const auto seconds = dateFromXML(text_)) return Date::create(*seconds);
        refuse("a <date> must be written as 2020-01-31T12:00:00Z");
        return {};
      default:
        if (auto bytes = dataFromXML(text_)) return Data::create(std::move(*bytes));
        refuse("<data> must be in base64, filled up with = signs");
        return {};
    }
  }

  void endCollection() {
    const Open collection = open_.back();
    const auto first = complete_.begin() + static_cast<std::ptrdiff_t>(collection.first);
    const auto from = std::make_move_iterator(first);
    const auto to = std::make_move_iterator(complete_.end());
    Value value;
    if (collection.element == Element::Array) {
      value = Array::create(std::vector<Value>(from, to));
    } else {
      if (contentOfOpen() % 2 != 0) return refuse("a <key> without a value");
      DictionaryBuilder builder;
      builder.reserve(contentOfOpen() / 2);
      for (auto entry = first; entry != complete_.end(); entry += 2) {
        builder.set(std::move(entry[0]), std::move(entry[1]));
      }
      value = builder.build();
    }
    complete_.erase(first, complete_.end());
    complete_.push_back(std::move(value));
    open_.pop_back();
  }

  std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser> parser_;
  PropertyListObserver* observer_;
  std::vector<Open> open_;
  std::vector<Value> complete_;
  // The value or key whose text is being read.
  Element leaf_ = Element::None;
  std::string text_;
  bool isInList_ = false;
  std::size_t elements_ = 0;
  SharedKeys sharedKeys_;
  std::string place_;
  std::string reason_;
};

}  // namespace

Result<Value> parseXMLPropertyList(std::string_view text, PropertyListObserver* observer) {
  return Reader(observer).read(text);
}

}  // namespace commandfilter::detail
