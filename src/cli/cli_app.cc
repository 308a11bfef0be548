#include "cli/cli_app.h"

#include <system_error>

#include "cli/plain_options.h"
#include "cli/registry.h"
#include "cli/stream_messages.h"
#include "core/file_util.h"
#include "core/settings.h"
#include "core/text_encoding.h"

namespace lmt::cli {
namespace {

constexpr std::string_view kFilterSection = "OknoFilter";

void PrintHelp(std::ostream& out) {
  out << "Usage: layomat COMMAND [ARGS] [options]\n\n"
         "Turns the drawing frames of a DXF drawing into paper-space "
         "layouts, and more.\n\nCommands:\n";
  const std::vector<CommandInfo> commands = CommandRegistry::Global().List();
  if (commands.empty()) out << "  (none yet)\n";
  for (const CommandInfo& entry : commands) {
    out << "  " << entry.usage << "\n      " << entry.summary << "\n";
  }
  out << "\n" << GlobalOptionsHelp();
  out << "\nExit status: 0 done, 1 refused, 2 bad command line, 3 file "
         "error.\n";
}

bool SectionKnown(core::Windows& windows, std::string_view section) {
  if (windows.Find(section) != nullptr) return true;
  // Sections that are no window's name: the host choice, and the
  // replace-text window's own spelling (equal ignoring case anyway).
  return core::EqualsIgnoreAsciiCase(section, "VersiaCAD") ||
         core::EqualsIgnoreAsciiCase(section, "OknoFunctionReplaceTEXT");
}

}  // namespace

void CommandContext::ReapplyFilterSets() {
  // The entries were validated before the command started.
  ApplySets(options.sets, addin.windows(), /*filter_only=*/true).IgnoreError();
}

CliEnvironment SystemCliEnvironment(const char* argv0) {
  CliEnvironment env;
  std::error_code ec;
  std::filesystem::path exe =
      std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec || exe.empty()) {
    exe = std::filesystem::absolute(
        core::PathFromUtf8(argv0 != nullptr ? argv0 : ""), ec);
  }
  env.program_folder = exe.parent_path();
  env.get_env = core::SystemEnvLookup();
  env.format_number = core::SystemNumberFormatter();
  return env;
}

Status ApplySets(const std::vector<SetAssignment>& sets, core::Windows& windows,
                 bool filter_only) {
  for (const SetAssignment& set : sets) {
    if (filter_only &&
        !core::EqualsIgnoreAsciiCase(set.section, kFilterSection))
      continue;
    const std::string name = set.section + "." + set.key;
    if (!SectionKnown(windows, set.section)) {
      return Status::InvalidArgument("--set " + name + ": unknown section " +
                                     set.section);
    }
    std::optional<core::Window::Slot> slot =
        core::ResolveSetting(windows, set.section, set.key);
    if (!slot) {
      return Status::InvalidArgument("--set " + name + ": unknown key " +
                                     set.key + " in section " + set.section);
    }
    // Stricter than the settings reader, which falls back to the first
    // entry: on the command line an index outside the list is a mistake.
    if (auto* list = dynamic_cast<core::ComboBox*>(slot->control);
        list != nullptr && list->stored() == core::ComboBox::Stored::kIndex) {
      Result<int> index = core::ParseIntegerWord(set.value);
      if (index.ok() && (*index < 0 || *index >= list->size())) {
        return Status::InvalidArgument("--set " + name + ": index " +
                                       set.value + " outside 0.." +
                                       std::to_string(list->size() - 1));
      }
    }
    Status s = slot->control->SetValueWord(slot->slot, set.value);
    if (!s.ok()) {
      return Status::InvalidArgument("--set " + name + ": " + s.message());
    }
  }
  return Status::Ok();
}

int RunLayomat(const std::vector<std::string>& args, std::ostream& out,
               std::ostream& err, const CliEnvironment& cli_env) {
  Result<CliOptions> parsed = ParseCommandLine(args);
  if (!parsed.ok()) {
    err << "layomat: " << parsed.status().message()
        << "\nTry 'layomat --help'.\n";
    return kExitUsage;
  }
  const CliOptions& options = *parsed;
  const CommandInfo* command = nullptr;
  if (!options.command.empty()) {
    command = CommandRegistry::Global().Find(options.command);
    if (command == nullptr) {
      err << "layomat: unknown command '" << options.command
          << "'\nTry 'layomat --help'.\n";
      return kExitUsage;
    }
  }
  if (options.help) {
    if (command != nullptr) {
      out << "Usage: " << command->usage << "\n"
          << command->summary << "\n\n"
          << GlobalOptionsHelp();
    } else {
      PrintHelp(out);
    }
    return kExitOk;
  }
  if (options.version) {
    out << "layomat " << core::kVersion << "\n";
    return kExitOk;
  }
  if (command == nullptr) {
    err << "layomat: no command given\nTry 'layomat --help'.\n";
    return kExitUsage;
  }
  if (Status needed = CheckRequiredOptions(*command, options); !needed.ok()) {
    err << "layomat: " << needed.message() << "\nTry 'layomat " << command->name
        << " --help'.\n";
    return kExitUsage;
  }

  StreamMessageSink messages(err, options.quiet);
  core::Environment env;
  env.addin_folder = cli_env.program_folder;
  env.get_env = cli_env.get_env;
  env.format_number = cli_env.format_number;
  env.messages = &messages;
  core::AddIn addin(std::move(env));
  addin.InitGlobals(/*create_files=*/false);

  if (options.lang_file &&
      core::EqualsIgnoreAsciiCase(*options.lang_file, "ru")) {
    addin.globals().UseRussian();
  } else if (options.lang_file &&
             core::EqualsIgnoreAsciiCase(*options.lang_file, "en")) {
    // No file: every caption and message takes its built-in English text.
    addin.globals().UseLanguageFile({});
  } else if (options.lang_file) {
    const std::filesystem::path lang = core::PathFromUtf8(*options.lang_file);
    if (!core::FileExists(lang)) {
      err << "layomat: " << *options.lang_file
          << ": cannot read the language file (no such file)\n";
      return kExitFileError;
    }
    addin.globals().UseLanguageFile(lang);
  }
  std::filesystem::path settings;  // empty: designed values
  if (options.settings_file) {
    settings = core::PathFromUtf8(*options.settings_file);
    if (!core::FileExists(settings)) {
      err << "layomat: " << *options.settings_file
          << ": cannot read the settings file (no such file)\n";
      return kExitFileError;
    }
  } else if (core::FileExists(addin.globals().settings_path)) {
    settings = addin.globals().settings_path;
  }
  addin.LoadModels(settings);

  Status set_status =
      ApplyPlainAndSets(options.plain, options.sets, addin.windows());
  if (!set_status.ok()) {
    err << "layomat: " << set_status.message() << "\n";
    return kExitUsage;
  }
  CommandContext context{options, addin, out, err, cli_env.exits_after_run};
  return command->run(context);
}

}  // namespace lmt::cli
