// What answers messages at once.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Selector.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A status service as names see it: whether it answers to a message and what it answers are one
/// question, which would be three for an object that forwards its messages.
class COMMANDFILTER_EXPORT ADMMessageSource : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// Sends the message, with the object when it takes one; further arguments are nil. False, with
  /// `answer` as it was, when the message is to be sent as to any other object. May wait for the
  /// device.
  virtual bool answerMessage(const Selector& selector, const Value& object, Value& answer) = 0;
  /// What the answer is known to be, without asking: borrowed until the next question or until the
  /// services are forgotten, the null object for nil. nil, which the base answers, when the message
  /// has to be sent.
  [[nodiscard]] virtual const Value& knownAnswer(const Selector& selector,
                                                 const Value& object) const noexcept;

 protected:
  ~ADMMessageSource() = default;
};

}  // namespace commandfilter
