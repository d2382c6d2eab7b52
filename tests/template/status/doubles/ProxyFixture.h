// A proxy, its service and its creator.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "runtime/ValueVector.h"
#include "template/status/ADMStatusServiceProxy.h"
#include "template/status/doubles/OneServiceCreator.h"
#include "template/status/doubles/ServiceDouble.h"

namespace commandfilter::testing {

inline Ref<Array> pathOf(std::initializer_list<std::string_view> components) {
  ValueVector strings;
  for (const std::string_view component : components) strings.push_back(stringOf(component));
  return Array::create(std::move(strings));
}

class StatusServiceProxy : public ::testing::Test {
 protected:
  static RefPtr<ADMStatusServiceProxy> proxyFor(ADMStatusServiceCreator* creator,
                                                std::string_view name = "Test") {
    return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(
        creator, String::create(std::string(name)).get());
  }
  // The value at the path and what the proxy says about it: "value", or "nil: reason".
  std::string valueAt(const Array& path) {
    RefPtr<String> errorInfo = String::create("from before");
    const Value value = proxy_->valueForFeaturePathComponents_errorInfo(path, errorInfo);
    return shownValue(value, errorInfo.get());
  }
  std::string valueAt(std::initializer_list<std::string_view> path) {
    return valueAt(*pathOf(path));
  }
  // The same from the service itself.
  std::string serviceValueAt(const Array* path) {
    RefPtr<String> errorInfo;
    const Value value = proxy_->serviceValueForFeaturePathComponents_errorInfo(path, &errorInfo);
    return shownValue(value, errorInfo.get());
  }
  static std::string shownValue(const Value& value, const String* errorInfo) {
    std::string text = value.isNil() ? "nil" : descriptionOf(value);
    if (errorInfo != nullptr) text.append(": ").append(errorInfo->view());
    return text;
  }
  Value ask(std::string_view selector, std::initializer_list<Value> arguments = {}) {
    return send(proxy_, Selector(selector), arguments);
  }
  // What the cache holds under the key; "none" when nothing.
  std::string cached(std::string_view key) {
    const Value& value = creator_->cache->objectForKey(stringOf(key));
    return value.isNil() ? "none" : descriptionOf(value);
  }

  Ref<ServiceDouble> service_ = ServiceDouble::create();
  Ref<OneServiceCreator> creator_ = OneServiceCreator::create(service_);
  RefPtr<ADMStatusServiceProxy> proxy_ = proxyFor(creator_.get());
};

}  // namespace commandfilter::testing
