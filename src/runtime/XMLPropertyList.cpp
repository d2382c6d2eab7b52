#include "runtime/XMLPropertyList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/ExpatLibrary.h"
#include "runtime/PropertyListBuilder.h"
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

// Follows the parser through the list.
class Reader {
 public:
  Reader(const ExpatLibrary& library, PropertyListObserver* observer)
      : library_(library),
        parser_(library.createParser("UTF-8"), library.freeParser),
        observer_(observer) {
    if (!parser_) throw std::bad_alloc();
    library_.setUserData(parser_.get(), this);
    library_.setElementHandler(
        parser_.get(),
        [](void* self, const XML_Char* name, const XML_Char** /*attributes*/) {
          static_cast<Reader*>(self)->begin(name);
        },
        [](void* self, const XML_Char* /*name*/) { static_cast<Reader*>(self)->end(); });
    library_.setCharacterDataHandler(
        parser_.get(), [](void* self, const XML_Char* text, int length) {
          static_cast<Reader*>(self)->append({text, static_cast<std::size_t>(length)});
        });
    library_.setStartDoctypeDeclHandler(
        parser_.get(), [](void* self, const XML_Char* /*name*/, const XML_Char* /*system*/,
                          const XML_Char* /*public*/, int declares) {
          if (declares == 0) return;
          static_cast<Reader*>(self)->refuse("declarations in the document type");
        });
    // A document type elsewhere, which is never fetched, may declare any entity.
    library_.setSkippedEntityHandler(parser_.get(),
                                     [](void* self, const XML_Char* /*name*/, int /*isParameter*/) {
                                       static_cast<Reader*>(self)->refuse(kUndefinedEntity);
                                     });
  }

  Result<Value> read(std::string_view text) {
    const int size = static_cast<int>(text.size());
    if (library_.parse(parser_.get(), text.data(), size, XML_TRUE) != XML_STATUS_OK) {
      return Failure{isRefused() ? place_ + reason_ : here() + parserReason()};
    }
    return builder_.take();
  }

 private:
  static constexpr const char* kUndefinedEntity =
      "undefined entity; only &amp; &lt; &gt; &quot; and &apos; are defined";

  [[nodiscard]] const char* parserReason() const {
    const XML_Error error = library_.errorCode(parser_.get());
    if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    return error == XML_ERROR_UNDEFINED_ENTITY ? kUndefinedEntity : library_.errorString(error);
  }
  [[nodiscard]] std::size_t placeOfEvent() const {
    return static_cast<std::size_t>(library_.currentByteIndex(parser_.get()));
  }
  [[nodiscard]] std::size_t placeBehindEvent() const {
    return placeOfEvent() + static_cast<std::size_t>(library_.currentByteCount(parser_.get()));
  }
  [[nodiscard]] std::string here() const {
    return "line " + std::to_string(library_.currentLineNumber(parser_.get())) + ", column " +
           std::to_string(library_.currentColumnNumber(parser_.get()) + 1) + ": ";
  }

  // The parser may still tell of one element after this.
  void refuse(std::string reason) {
    if (isRefused()) return;
    place_ = here();
    reason_ = std::move(reason);
    library_.stopParser(parser_.get(), XML_FALSE);
  }
  [[nodiscard]] bool isRefused() const { return !place_.empty(); }

  void begin(std::string_view name) {
    if (isRefused()) return;
    const Element element = elementNamed(name);
    if (const std::string reason = objectionTo(element, name); !reason.empty()) {
      refuse(reason);
    } else if (element == Element::List) {
      isInList_ = true;
    } else if (isCollection(element)) {
      using enum PropertyListBuilder::Collection;
      builder_.begin(element == Element::Array ? Array : Dictionary);
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
      if (element == Element::List) return isInList_ || !builder_.isOutside();
      return builder_.isInDictionary() ? builder_.wantsKey() != (element == Element::Key)
                                       : element == Element::Key;
    };
    if (isMisplaced()) return misplaced(name);
    if (builder_.isComplete()) return "a second value beside the first";
    if (element == Element::List) return {};
    if (builder_.isFull()) return "it holds too many values";
    if (isCollection(element) && builder_.isDeepest()) {
      return "its collections are nested too deeply";
    }
    return {};
  }

  [[nodiscard]] std::string misplaced(std::string_view name) const {
    std::string found = "<";
    found.append(name).append("> ");
    if (leaf_ != Element::None) return found + "inside of a value";
    if (builder_.wantsKey()) return found + "where a <key> must stand";
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
      endLeaf();
      leaf_ = Element::None;
    } else if (!builder_.isOutside()) {
      if (!builder_.end()) refuse("a <key> without a value");
    } else if (!builder_.isComplete()) {
      return refuse("a property list without a value");
    } else {
      return;
    }
    if (observer_ != nullptr && !isRefused()) observer_->end(placeOfEvent());
  }

  // Adds what the text says, or refuses the list when the text is none of its kind.
  void endLeaf() {
    switch (leaf_) {
      case Element::Key:
        return builder_.addKey(text_);
      case Element::String:
        return builder_.add(String::create(text_));
      case Element::True:
        return builder_.add(Value::boolean(true));
      case Element::False:
        return builder_.add(Value::boolean(false));
      case Element::Integer:
        if (const auto number = integerFromXML(text_)) return builder_.add(*number);
        return refuse("an <integer> must be a whole number of 64 bits");
      case Element::Real:
        if (const auto number = realFromXML(text_)) return builder_.add(Number::real(*number));
        return refuse("a <real> must be a number such as 1.5, within the range of reals");
      case Element::Date:
        if (const auto seconds = dateFromXML(text_)) return builder_.add(Date::create(*seconds));
        return refuse("a <date> must be written as 2020-01-31T12:00:00Z");
      default:
        if (auto bytes = dataFromXML(text_)) return builder_.add(Data::create(std::move(*bytes)));
        return refuse("<data> must be in base64, filled up with = signs");
    }
  }

  const ExpatLibrary& library_;
  std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser_;
  PropertyListObserver* observer_;
  PropertyListBuilder builder_;
  // The value or key whose text is being read.
  Element leaf_ = Element::None;
  std::string text_;
  bool isInList_ = false;
  std::string place_;
  std::string reason_;
};

}  // namespace

Result<Value> parseXMLPropertyList(std::string_view text, PropertyListObserver* observer) {
  const ExpatLibrary* library = ExpatLibrary::shared();
  if (library == nullptr)
    return Failure{"expat, which reads it, cannot be loaded; install libexpat1"};
  return Reader(*library, observer).read(text);
}

}  // namespace commandfilter::detail
