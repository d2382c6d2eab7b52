// A status service as expressions see it.
#pragma once

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Invocation.h"
#include "runtime/MethodSignature.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/Selector.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMMessageSource.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

class RecentQuestions;
struct MessageForm;
class ServiceQuestion;

/// Stands for the service of a name: the service is made when it is first asked something, and what
/// it answers to feature paths and to messages with at most one object is asked for once. Service
/// and answers are kept by the creator, so all proxies of a name share them.
///
/// Messages that every object answers (description, equality, values by key) are answered by the
/// proxy itself; all others reach the service.
class COMMANDFILTER_EXPORT ADMStatusServiceProxy final
    : public Implements<Object, ADMFeaturePathSource, ADMMessageSource> {
 public:
  static const Class kClass;

  /// A proxy for the service of that name, which may be empty; nil when either is nil.
  [[nodiscard]] static RefPtr<ADMStatusServiceProxy> initWithServiceCreator_serviceName(
      ADMStatusServiceCreator* creator, const String* serviceName);
  /// The same.
  [[nodiscard]] static RefPtr<ADMStatusServiceProxy> proxyForServiceCreator_serviceName(
      ADMStatusServiceCreator* creator, const String* serviceName) {
    return initWithServiceCreator_serviceName(creator, serviceName);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Ref<ADMStatusServiceCreator>& serviceCreator() const noexcept {
    return serviceCreator_;
  }
  [[nodiscard]] const Ref<String>& serviceName() const noexcept { return serviceName_; }

  /// The service behind the proxy; nil when there is none.
  [[nodiscard]] Value realServiceObject() const;
  /// What the service has answered so far, by `cacheKeyForInvocation` or by the components of a
  /// feature path joined with "#"; the null object stands for nil.
  [[nodiscard]] RefPtr<MutableDictionary> cache() const;

  /// The value at a path of one to three components, which is looked up once: a path that failed
  /// is nil afterwards, without a reason.
  Value valueForFeaturePathComponents_errorInfo(const Array& components,
                                                RefPtr<String>& errorInfo) override;
  [[nodiscard]] const Value& knownValueForFeaturePathComponents(
      const Array& components) const override;
  /// The same from the service itself. `errorInfo` may be nullptr, and changes only when the path
  /// cannot be answered.
  Value serviceValueForFeaturePathComponents_errorInfo(const Array* components,
                                                       RefPtr<String>* errorInfo);
  /// Sends a message that the service answers to on, or gives the answer that is kept.
  bool answerMessage(const Selector& selector, const Value& object, Value& answer) override;
  [[nodiscard]] const Value& knownAnswer(const Selector& selector,
                                         const Value& object) const noexcept override;
  /// The key under which the answer to a message is kept; nil for a message whose answer is not:
  /// one with more than one argument, or with an argument or result that is no object.
  [[nodiscard]] RefPtr<String> cacheKeyForInvocation(const Invocation& invocation) const;

  /// Always throws: what stands for something else is no key.
  [[nodiscard]] Value dictionaryKey() const override;
  [[nodiscard]] bool respondsToSelector(const Selector& selector) const override;
  [[nodiscard]] bool conformsToProtocol(const Protocol& protocol) const override;
  [[nodiscard]] MethodSignature methodSignatureForSelector(const Selector& selector) const override;
  /// Sends the message on, or gives the answer that is kept. Without a service the answer is nil,
  /// 0 or NO.
  /// @throws Exception when there is a service that does not answer to the selector.
  void forwardInvocation(Invocation& invocation) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMStatusServiceProxy(Ref<ADMStatusServiceCreator> creator, Ref<String> serviceName);
  ~ADMStatusServiceProxy() override;

  /// The answer that is remembered: borrowed, the null object for nil, nil when there is none.
  [[nodiscard]] const Value& recentAnswer(const ServiceQuestion& question) const noexcept;
  /// The key under which the answer is kept, made by `makeKey` when it is not remembered.
  template <typename MakeKey>
  [[nodiscard]] Value keyOf(const ServiceQuestion& question, MakeKey&& makeKey) const;
  /// How the service answers to a message, see RecentQuestions; none when it does not.
  [[nodiscard]] MessageForm formOf(const Value& service, const Selector& selector) const;
  /// The answer that is kept under the key, or what `ask` gives, which is kept then.
  template <typename Ask>
  [[nodiscard]] Value keptOr(const ServiceQuestion& question, const Value& key, Ask&& ask) const;
  /// The same for a message about the argument, whose answer need not be one that is kept.
  template <typename Ask>
  [[nodiscard]] Value messageKeptOr(const ServiceQuestion& question, const MessageForm& form,
                                    const Selector& selector, const Value& argument,
                                    Ask&& ask) const;
  /// `answerMessage` when the answer is not remembered.
  [[nodiscard]] bool findAnswer(const Selector& selector, const Value& object, Value& answer) const;
  void remember(const ServiceQuestion& question, const Value& key, const Value& answer,
                const RefPtr<MutableDictionary>& kept) const;

  Ref<ADMStatusServiceCreator> serviceCreator_;
  Ref<String> serviceName_;
  /// The creator's, or else made when an answer is found where answers are kept: many proxies are
  /// asked little, and once.
  mutable RefPtr<RecentQuestions> recent_;
};

}  // namespace commandfilter
