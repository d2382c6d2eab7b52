// Status by feature, property and identifier.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/RunLoop.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "runtime/device_model/ADMInterface.h"

namespace commandfilter {

/// A status that is described by features. A feature has a value and properties; a feature and its
/// properties may have one value for each of several identifiers. Names are strings, looked up by
/// value equality; which ones there are is the framework's business. What is not there is nil.
///
/// Observers are objects that get a message without arguments when a value changes. They are named
/// by the selector's name, and not owned. A service that never changes need not call them.
class COMMANDFILTER_EXPORT ADMStatus : public ADMInterface {
 public:
  static const Protocol kProtocol;
  /// The rows of the messages below.
  static const MethodGroup kMethods;

  /// Who was set as the delegate; nil for a service that has nothing to tell.
  virtual Value delegate() { return {}; }
  /// Sets the delegate, which is not owned; what it is told is the framework's business.
  virtual void setDelegate(const Value& /*delegate*/) {}

  /// The names of all features, an array.
  virtual Value supportedFeatures() { return {}; }
  /// YES for a feature that is there, whether it has a value now or not.
  virtual bool isSupportedFeature(const Value& /*feature*/) { return false; }
  /// The names of the feature's properties, an array; nil for a feature that is not there.
  virtual Value supportedPropertiesForFeature(const Value& /*feature*/) { return {}; }
  /// YES for a property that the feature has.
  virtual bool isSupportedProperty_forFeature(const Value& /*property*/, const Value& /*feature*/) {
    return false;
  }
  /// The identifiers that the feature has values for, an array.
  virtual Value identifiersForFeature(const Value& /*feature*/) { return {}; }
  /// The value of the feature.
  virtual Value valueForFeature(const Value& /*feature*/) { return {}; }
  /// The value of a property of the feature.
  virtual Value valueForFeature_property(const Value& /*feature*/, const Value& /*property*/) {
    return {};
  }
  /// The value of a property of the feature for one identifier.
  virtual Value valueForFeature_property_identifier(const Value& /*feature*/,
                                                    const Value& /*property*/,
                                                    const Value& /*identifier*/) {
    return {};
  }

  /// Has the observer told when the feature's value changes.
  virtual void addObserver_selector_feature(const Value& /*observer*/, const String* /*selector*/,
                                            const Value& /*feature*/) {}
  /// Has the observer told when the property's value changes.
  virtual void addObserver_selector_feature_property(const Value& /*observer*/,
                                                     const String* /*selector*/,
                                                     const Value& /*feature*/,
                                                     const Value& /*property*/) {}
  /// Has the observer told when the property's value for the identifier changes.
  virtual void addObserver_selector_feature_property_identifier(const Value& /*observer*/,
                                                                const String* /*selector*/,
                                                                const Value& /*feature*/,
                                                                const Value& /*property*/,
                                                                const Value& /*identifier*/) {}
  /// Ends one observation. An observation that does not exist is no error, here and below.
  virtual void removeObserver_feature_property_identifier(const Value& /*observer*/,
                                                          const Value& /*feature*/,
                                                          const Value& /*property*/,
                                                          const Value& /*identifier*/) {}
  /// Ends the observer's observations of the property.
  virtual void removeObserver_feature_property(const Value& /*observer*/, const Value& /*feature*/,
                                               const Value& /*property*/) {}
  /// Ends the observer's observations of the feature.
  virtual void removeObserver_feature(const Value& /*observer*/, const Value& /*feature*/) {}
  /// Ends all of the observer's observations.
  virtual void removeObserver(const Value& /*observer*/) {}

  /// Has changes noticed while the mode of the run loop runs.
  virtual void scheduleInRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) {}
  /// Takes what the service waits for out of the mode of the run loop.
  virtual void removeFromRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) {}

 protected:
  ~ADMStatus() = default;
};

}  // namespace commandfilter
