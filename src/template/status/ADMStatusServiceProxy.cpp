#include "template/status/ADMStatusServiceProxy.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/SizeLimits.h"
#include "template/status/RecentQuestions.h"
#include "template/status/ServiceQuestion.h"

namespace commandfilter {

namespace {

constexpr auto kProxyProtocols =
    conformances<ADMStatusServiceProxy, ADMFeaturePathSource, ADMMessageSource>();
constexpr std::array kProxyMethods{
    method<&ADMStatusServiceProxy::realServiceObject>("realServiceObject"),
    method<&ADMStatusServiceProxy::cache>("cache"),
};

// The receiver and the selector come before a message's own arguments.
constexpr std::size_t kHidden = 2;

// What most keys fit in, so that they are put together in one piece of memory.
constexpr std::size_t kUsualKey = 64;

Value joinComponents(const Array& components) {
  std::string text;
  text.reserve(kUsualKey);
  bool onlyTexts = true;
  for (std::size_t i = 0; i < components.count(); ++i) {
    if (i != 0) text.push_back('#');
    if (const auto* component = castTo<String>(components[i])) {
      text.append(component->view());
    } else {
      onlyTexts = false;
      appendDescription(text, components[i]);
    }
    checkTextSize(text.size());
  }
  return onlyTexts ? String::ofUTF8(text) : String::create(text);
}

// What a message is about; nil for a message without arguments.
Value argumentOf(const Invocation& invocation) {
  return invocation.methodSignature().numberOfArguments() > kHidden
             ? invocation.argumentAtIndex(kHidden)
             : Value();
}

Value joinMessage(const Selector& selector, const Value& argument) {
  std::string text;
  text.reserve(kUsualKey);
  text.append("@").append(selector.name());
  if (!argument.isNil()) appendDescription(text, argument);
  return String::create(std::move(text));
}

// True when the service answers the question, and its answer is NO.
bool refuses(const Value& service, const Selector& question,
             std::initializer_list<Value> arguments) {
  if (!respondsToSelector(service, question)) return false;
  const Value answer = send(service, question, arguments);
  return answer.isNumber() ? !answer.number().boolValue() : answer.isNil();
}

Value fail(RefPtr<String>* errorInfo, std::string_view reason) {
  if (errorInfo != nullptr) *errorInfo = String::create(std::string(reason));
  return {};
}

// The answer of the service; the reason when it does not answer to the message.
Value ask(const Value& service, const Selector& message, std::initializer_list<Value> arguments,
          RefPtr<String>* errorInfo, std::string_view reason) {
  if (!respondsToSelector(service, message)) return fail(errorInfo, reason);
  return send(service, message, arguments);
}

}  // namespace

constinit const Class ADMStatusServiceProxy::kClass{.name = "ADMStatusServiceProxy",
                                                    .base = &Object::kClass,
                                                    .protocols = kProxyProtocols,
                                                    .methods = kProxyMethods};

ADMStatusServiceProxy::ADMStatusServiceProxy(Ref<ADMStatusServiceCreator> creator,
                                             Ref<String> serviceName)
    : serviceCreator_(std::move(creator)),
      serviceName_(std::move(serviceName)),
      recent_(serviceCreator_->recentQuestionsForServiceName(*serviceName_)) {}

ADMStatusServiceProxy::~ADMStatusServiceProxy() = default;

RefPtr<ADMStatusServiceProxy> ADMStatusServiceProxy::initWithServiceCreator_serviceName(
    ADMStatusServiceCreator* creator, const String* serviceName) {
  if (creator == nullptr || serviceName == nullptr) return nullptr;
  return make<ADMStatusServiceProxy>(
      Ref<ADMStatusServiceCreator>(*creator),
      Ref<String>(const_cast<String&>(*serviceName)));  // NOLINT: shared, not changed
}

Value ADMStatusServiceProxy::realServiceObject() const {
  return serviceCreator_->statusServiceForName(serviceName_.get());
}

RefPtr<MutableDictionary> ADMStatusServiceProxy::cache() const {
  return serviceCreator_->userInfoForServiceName(serviceName_.get());
}

const Value& ADMStatusServiceProxy::recentAnswer(const ServiceQuestion& question) const noexcept {
  static constexpr Value kNone;
  if (!recent_) return kNone;
  return recent_->answers.answerTo(question, serviceCreator_->generation());
}

template <typename MakeKey>
Value ADMStatusServiceProxy::keyOf(const ServiceQuestion& question, MakeKey&& makeKey) const {
  if (recent_) {
    const Value& known = recent_->answers.keyFor(question);
    if (!known.isNil()) return known;
  }
  return makeKey();
}

void ADMStatusServiceProxy::remember(const ServiceQuestion& question, const Value& key,
                                     const Value& answer,
                                     const RefPtr<MutableDictionary>& kept) const {
  if (!question.canBeRemembered()) return;
  if (!recent_) recent_ = make<RecentQuestions>();
  recent_->answers.remember(question, {key, answer, kept, serviceCreator_->generation()});
}

template <typename Ask>
Value ADMStatusServiceProxy::keptOr(const ServiceQuestion& question, const Value& key,
                                    Ask&& ask) const {
  const RefPtr<MutableDictionary> kept = cache();
  if (!kept) return ask();
  const Value& known = kept->objectForKey(key);
  if (!known.isNil()) {
    remember(question, key, known, kept);
    return known.nullAsNil();
  }
  const std::uint64_t generation = serviceCreator_->generation();
  Value answer = ask();
  kept->setObject_forKey(answer.orNull(), key);
  // Whoever answers may have the services forgotten meanwhile; then this is no answer of today's.
  if (serviceCreator_->generation() == generation) remember(question, key, answer.orNull(), kept);
  return answer;
}

const Value& ADMStatusServiceProxy::knownValueForFeaturePathComponents(
    const Array& components) const {
  return recentAnswer(ServiceQuestion(std::span(components.begin(), components.end())));
}

Value ADMStatusServiceProxy::valueForFeaturePathComponents_errorInfo(const Array& components,
                                                                     RefPtr<String>& errorInfo) {
  errorInfo = nullptr;
  const ServiceQuestion question(std::span(components.begin(), components.end()));
  const Value& recent = recentAnswer(question);
  if (!recent.isNil()) return recent.nullAsNil();
  const Value key = keyOf(question, [&] { return joinComponents(components); });
  return keptOr(question, key, [&] {
    return serviceValueForFeaturePathComponents_errorInfo(&components, &errorInfo);
  });
}

Value ADMStatusServiceProxy::serviceValueForFeaturePathComponents_errorInfo(
    const Array* components, RefPtr<String>* errorInfo) {
  static const Selector kIsSupportedFeature("isSupportedFeature:");
  static const Selector kIsSupportedProperty("isSupportedProperty:forFeature:");
  static const Selector kFeature("valueForFeature:");
  static const Selector kProperty("valueForFeature:property:");
  static const Selector kIdentifier("valueForFeature:property:identifier:");
  if (components == nullptr || components->isEmpty()) return fail(errorInfo, "Path is empty");
  if (components->count() > 3) return fail(errorInfo, "Incorrect path");
  const Value& feature = (*components)[0];
  const Value service = realServiceObject();
  if (service.isNil()) return fail(errorInfo, "Empty service");
  if (refuses(service, kIsSupportedFeature, {feature})) {
    return fail(errorInfo, "Feature is not supported");
  }
  if (components->count() == 1) {
    return ask(service, kFeature, {feature}, errorInfo,
               "Value for feature functionality is not supported");
  }
  const Value& property = (*components)[1];
  if (refuses(service, kIsSupportedProperty, {property, feature})) return {};
  if (components->count() == 2) {
    return ask(service, kProperty, {feature, property}, errorInfo,
               "Value for feature and property functionality is not supported");
  }
  return ask(service, kIdentifier, {feature, property, (*components)[2]}, errorInfo,
             "Value for feature, property and identifier functionality is not supported");
}

MessageForm ADMStatusServiceProxy::formOf(const Value& service, const Selector& selector) const {
  if (recent_) {
    const MessageForm known = recent_->messages.formFor(service, selector);
    if (known.isAnswered) return known;
  }
  const std::uint64_t generation = serviceCreator_->generation();
  if (!commandfilter::respondsToSelector(service, selector)) return {};
  const MethodSignature signature = commandfilter::methodSignatureForSelector(service, selector);
  if (!signature) return {};
  const MessageForm form(signature);
  if (recent_ && serviceCreator_->generation() == generation) {
    recent_->messages.remember(service, selector, form);
  }
  return form;
}

template <typename Ask>
Value ADMStatusServiceProxy::messageKeptOr(const ServiceQuestion& question, const MessageForm& form,
                                           const Selector& selector, const Value& argument,
                                           Ask&& ask) const {
  if (!form.isKept) return ask();
  const auto makeKey = [&] { return joinMessage(selector, argument); };
  // A service may say of a message that it takes an argument when its name does not.
  if (form.takesArgument != ServiceQuestion::hasArgument(selector))
    return keptOr(ServiceQuestion(), makeKey(), ask);
  return keptOr(question, keyOf(question, makeKey), ask);
}

const Value& ADMStatusServiceProxy::knownAnswer(const Selector& selector,
                                                const Value& object) const noexcept {
  return recentAnswer(ServiceQuestion(selector, object));
}

bool ADMStatusServiceProxy::answerMessage(const Selector& selector, const Value& object,
                                          Value& answer) {
  const Value& recent = knownAnswer(selector, object);
  if (recent.isNil()) return findAnswer(selector, object, answer);
  answer = recent.nullAsNil();
  return true;
}

bool ADMStatusServiceProxy::findAnswer(const Selector& selector, const Value& object,
                                       Value& answer) const {
  // What every object answers, the proxy answers itself.
  if (kClass.instanceMethod(selector) != nullptr) return false;
  const Value service = realServiceObject();
  const MessageForm form = formOf(service, selector);
  if (!form.isAnswered) return false;
  const ServiceQuestion question(selector, object);
  answer = messageKeptOr(question, form, selector, form.takesArgument ? object : Value(),
                         [&] { return performSelector(service, selector, object); });
  return true;
}

RefPtr<String> ADMStatusServiceProxy::cacheKeyForInvocation(const Invocation& invocation) const {
  const MessageForm form(invocation.methodSignature());
  if (!form.isKept) return nullptr;
  const Value key = joinMessage(invocation.selector(), argumentOf(invocation));
  return RefPtr<String>(castTo<String>(key));
}

Value ADMStatusServiceProxy::dictionaryKey() const {
  throw Exception("ADMStatusServiceProxy: a service cannot be a key");
}

bool ADMStatusServiceProxy::respondsToSelector(const Selector& selector) const {
  return commandfilter::respondsToSelector(realServiceObject(), selector) ||
         Object::respondsToSelector(selector);
}

bool ADMStatusServiceProxy::conformsToProtocol(const Protocol& protocol) const {
  return commandfilter::conformsToProtocol(realServiceObject(), protocol) ||
         Object::conformsToProtocol(protocol);
}

MethodSignature ADMStatusServiceProxy::methodSignatureForSelector(const Selector& selector) const {
  const MethodSignature signature =
      commandfilter::methodSignatureForSelector(realServiceObject(), selector);
  return signature ? signature : Object::methodSignatureForSelector(selector);
}

void ADMStatusServiceProxy::forwardInvocation(Invocation& invocation) {
  const Value service = realServiceObject();
  if (service.isNil()) {
    invocation.setZeroReturnValue();
    return;
  }
  if (!commandfilter::respondsToSelector(service, invocation.selector())) {
    Object::forwardInvocation(invocation);
    return;
  }
  const Selector& selector = invocation.selector();
  const Value argument = argumentOf(invocation);
  const ServiceQuestion question(selector, argument);
  const MessageForm form(invocation.methodSignature());
  invocation.setReturnValue(messageKeptOr(question, form, selector, argument, [&] {
    invocation.invokeWithTarget(service);
    return invocation.returnValue();
  }));
}

}  // namespace commandfilter
