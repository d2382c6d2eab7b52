// The status services of the device-model framework's device.
#pragma once

#include <cstdint>

#include "runtime/Class.h"
#include "runtime/DictionaryEntries.h"
#include "runtime/Export.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

/// Makes services with factories: the class named "ADM" + service name + "ServiceFactory", whoever
/// registered it, is asked with the class method `statusServiceForDMFServiceInfo:`.
class COMMANDFILTER_EXPORT ADMDMFStatusServiceCreator final
    : public Implements<Object, ADMStatusServiceCreator> {
 public:
  static const Class kClass;

  /// nil for a nil service info. A device that is not in the state `kServiceStateResolved` has no
  /// services.
  [[nodiscard]] static RefPtr<ADMDMFStatusServiceCreator> initWithDMFServiceInfo(
      const Value& serviceInfo);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The device that services are made for; nil when it is not usable.
  [[nodiscard]] const Value& serviceInfo() const noexcept { return serviceInfo_; }
  /// The device URI of the first service info; nil when that had none.
  [[nodiscard]] const RefPtr<String>& printerURI() const noexcept { return printerURI_; }
  /// Takes another device, whose state is not looked at, or nil; the services of the one before are
  /// forgotten. The same one again changes nothing.
  void setServiceInfo(const Value& serviceInfo);

  Value statusServiceForName(const String* name) override;
  RefPtr<MutableDictionary> userInfoForServiceName(const String* name) override;
  bool servicesAvailable() override { return !serviceInfo_.isNil(); }
  void reinitializeServices() override;
  [[nodiscard]] std::uint64_t generation() const noexcept override;
  [[nodiscard]] RefPtr<RecentQuestions> recentQuestionsForServiceName(const String& name) override;

  /// The services so far by name, the null object for one that could not be made.
  [[nodiscard]] MutableDictionary& statusServices();

  /// The URI of the socket of a device that was found by multicast DNS:
  /// "socket://address?vendor=...&product=...", with what no URI may hold as percent escapes. nil
  /// for any other device, and without an address, a vendor or a model.
  [[nodiscard]] RefPtr<String> socketURIFromServiceInfo(const Value& serviceInfo) const;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMDMFStatusServiceCreator(const Value& serviceInfo);
  ~ADMDMFStatusServiceCreator() override;

  [[nodiscard]] Value newService(const String& name) const;

  RefPtr<MutableDictionary> statusServices_;
  RefPtr<MutableDictionary> userInfos_;
  DictionaryEntries recentQuestions_;
  Value serviceInfo_;
  RefPtr<String> printerURI_;
};

}  // namespace commandfilter
