// The template of a command, the model's own or the one that comes with the plug-in.
#pragma once

#include <filter/protocols/ICommandFilterContext.h>
#include <filter/protocols/ICommandFilterTemplateEngine.h>
#include <runtime/Ref.h>

#include <string>
#include <string_view>

namespace commandfilter::standard {

/// Where an administrator puts the tables of templates: `commandfilter` in the scheduler's folder
/// of configuration files, which it names to its filters, usually /etc/cups.
[[nodiscard]] std::string tableFolder();

/// An engine for the command's template: the one that the table `<command>.plist` in `tableFolder`
/// has for the printer's model, otherwise `<command>.plist` in `resources`. What is wrong with a
/// table is reported, and the plug-in's own template is used then. nil, after a report, when there
/// is no device model or no template.
[[nodiscard]] RefPtr<ICommandFilterTemplateEngine> templateEngineForCommand(
    std::string_view command, const std::string& resources, ICommandFilterContext& context);

}  // namespace commandfilter::standard
