// Carries out ReportLevels, ReportStatus and AutoConfigure.
#pragma once

#include <filter/protocols/ICommandFilterContext.h>
#include <filter/protocols/ICommandFilterExecutor.h>
#include <filter/protocols/ICommandFilterTemplateEngine.h>
#include <runtime/Class.h>
#include <runtime/Object.h>
#include <runtime/Protocol.h>
#include <runtime/Ref.h>
#include <runtime/String.h>
#include <runtime/Value.h>

#include <string>
#include <utility>

namespace commandfilter::standard {

/// Writes what the command's template says as lines for the scheduler. The values that count:
///
///   Attributes  attribute of the queue to its values, one for each supply: `ATTR:` lines
///   ShortForms  attribute to what its values may be replaced with where room is short
///   KnownNames  what the queue has as marker-names; the same names are not told again
///   Reasons     the state reasons that hold: `STATE: +`
///   OwnReasons  all that the command ever sets; those that do not hold are taken back. Nothing is
///               said about reasons when Reasons is nil.
///   Options     keyword of the PPD to its choice: `PPD:` lines
///   Messages    lines for people, each with its prefix; the last is the command's answer
class StandardCommandsExecutor final : public Implements<Object, ICommandFilterExecutor> {
 public:
  static const Class kClass;

  /// nil without a context.
  static RefPtr<StandardCommandsExecutor> initWithFilterContext(ICommandFilterContext* context);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value executeCommand(const String& command) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit StandardCommandsExecutor(Ref<ICommandFilterContext> context)
      : context_(std::move(context)) {}
  ~StandardCommandsExecutor() override = default;

  void report(const std::string& line) { context_->reportMessageWithFormat("%s", line); }
  void reportAttributes(ICommandFilterTemplateEngine& engine);
  void reportReasons(ICommandFilterTemplateEngine& engine);
  void reportOptions(ICommandFilterTemplateEngine& engine);
  /// What went wrong in expressions, for whoever writes the template.
  void reportErrors(ICommandFilterTemplateEngine& engine);
  /// All messages but the last, which is the result.
  Value reportMessages(ICommandFilterTemplateEngine& engine);

  Ref<ICommandFilterContext> context_;
};

}  // namespace commandfilter::standard
