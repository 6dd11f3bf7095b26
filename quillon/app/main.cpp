// The program `quillon`: reads the command line, starts the host, runs one command.
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/session.h"

namespace quillon::app {
namespace {

struct Arguments {
  std::vector<std::string> plugIns;
  std::string password;
  std::string passwordFile;
  bool yes = false;
  FieldsArguments fields;
  FillArguments fill;
  ExportArguments exporting;
  ImportArguments importing;
  RenderArguments render;
  PagesArguments pages;
  SubmitArguments submit;
  ActArguments act;
  ResetArguments reset;
};

// How a signed document may be written all the same.
void AddSignedOptions(CLI::App* command, bool* append, bool* force, const char* whatForce) {
  command->add_flag("--force", *force, whatForce);
  command->add_flag("--append", *append,
                    "Write the changes behind the file's own bytes, so that what was signed stays");
}

constexpr const char* kForceSigned = "Write signed documents, whatever becomes of their signatures";

void AddFieldsCommand(CLI::App* program, Arguments* arguments) {
  CLI::App* command = program->add_subcommand(
      "fields", "List the form fields of a document, in the order of its field tree");
  command->add_option("FILE", arguments->fields.file, "The PDF document; - for standard input")
      ->required();
  command->add_flag("--json", arguments->fields.json, "As JSON (docs/fields-json.md)");
}

void AddFillCommand(CLI::App* program, Arguments* arguments) {
  CLI::App* command = program->add_subcommand(
      "fill", "Set field values, rebuild their appearances, write the result");
  FillArguments& fill = arguments->fill;
  command->add_option("FILE", fill.file, "The PDF document; - for standard input")->required();
  command->add_option("NAME=VALUE", fill.assignments,
                      "Full field names and their values; the first = ends the name");
  command->add_option("--values", fill.valuesFile,
                      "A JSON object of names and values; null empties a field");
  CLI::Option* output = command->add_option("-o,--output", fill.output,
                                            "Where the result goes; - for standard output");
  command->add_flag("--in-place", fill.inPlace, "Replace FILE with the result")->excludes(output);
  CLI::Option* records = command->add_option(
      "--records", fill.records,
      "A CSV file: a document for each row, -o being a pattern such as 'out/{name}.pdf'");
  command->add_option("--jobs", fill.jobs, "How many processes fill records")
      ->check(CLI::Range(1u, 256u))
      ->needs(records);
  AddSignedOptions(command, &fill.append, &fill.force,
                   "Fill read-only fields too, and write signed documents, whatever becomes of "
                   "their signatures");
  command->callback([&fill] {
    const bool values = !fill.assignments.empty() || !fill.valuesFile.empty();
    if (!fill.records.empty() && (values || fill.inPlace || fill.file == kStandardStream)) {
      throw CLI::ValidationError("--records",
                                 "takes FILE and --output, and no other values or input");
    }
    if (!fill.inPlace && fill.output.empty()) {
      throw CLI::RequiredError("one of --output and --in-place");
    }
    if (fill.inPlace && fill.file == kStandardStream) {
      throw CLI::ValidationError("--in-place", "standard input cannot be replaced; use --output");
    }
    if (fill.file == kStandardStream && fill.valuesFile == kStandardStream) {
      throw CLI::ValidationError("--values", "the document already comes from standard input");
    }
  });
}

void AddExportCommand(CLI::App* program, ExportArguments* arguments) {
  CLI::App* command = program->add_subcommand("export", "Write the values of a form into a file");
  command->add_option("FILE", arguments->file, "The PDF document; - for standard input")
      ->required();
  command
      ->add_option("-o,--output", arguments->output,
                   "The file: FDF, or JSON or CSV by its name's ending; - for standard output")
      ->required();
  command->add_option("--format", arguments->format, "What is written, whatever the name")
      ->check(CLI::IsMember({"fdf", "json", "csv"}));
}

void AddImportCommand(CLI::App* program, ImportArguments* arguments) {
  CLI::App* command = program->add_subcommand("import", "Fill in a form from files of values");
  command->add_option("FILE", arguments->file, "The PDF document; - for standard input")
      ->required();
  command->add_option("DATA", arguments->data, "FDF, JSON or CSV files, imported one after another")
      ->required();
  command
      ->add_option("-o,--output", arguments->output, "Where the result goes; - for standard output")
      ->required();
  AddSignedOptions(command, &arguments->append, &arguments->force,
                   "JSON and CSV fill read-only fields too; write signed documents anew");
}

void AddRenderCommand(CLI::App* program, Arguments* arguments) {
  CLI::App* command = program->add_subcommand("render", "Draw a page with its fields as a picture");
  RenderArguments& render = arguments->render;
  command->add_option("FILE", render.file, "The PDF document; - for standard input")->required();
  command->add_option("--page", render.page, "The page, counted from 1")
      ->check(CLI::Range(1u, 1000000u));
  command->add_option("--dpi", render.dpi, "Pixels an inch")->check(CLI::Range(1.0, 2400.0));
  command->add_option("-o,--output", render.output, "The PNG file; - for standard output")
      ->required();
}

CLI::App* AddPagesAction(CLI::App* pages, PagesArguments* arguments, PagesAction action,
                         const char* name, const char* description) {
  CLI::App* command = pages->add_subcommand(name, description);
  command->add_option("FILE", arguments->file, "The PDF document; - for standard input")
      ->required();
  command
      ->add_option("-o,--output", arguments->output, "Where the result goes; - for standard output")
      ->required();
  command->callback([arguments, action] { arguments->action = action; });
  return command;
}

void AddPagesCommand(CLI::App* program, PagesArguments* arguments) {
  constexpr const char* kRange = "Pages counted from 1, such as 3, 2-5 or 4-";
  CLI::App* pages =
      program->add_subcommand("pages", "Insert, delete or extract pages with their fields");
  pages->require_subcommand(1);
  CLI::App* insert = AddPagesAction(pages, arguments, PagesAction::kInsert, "insert",
                                    "Insert pages of another document");
  insert->add_option("OTHER", arguments->other, "The document whose pages are inserted")
      ->required();
  insert->add_option("--after", arguments->after,
                     "The page they come after, 0 for the front; otherwise they come last");
  insert->add_option("--range", arguments->range, kRange);
  AddSignedOptions(insert, &arguments->append, &arguments->force, kForceSigned);
  CLI::App* remove =
      AddPagesAction(pages, arguments, PagesAction::kDelete, "delete", "Delete pages");
  remove->add_option("RANGE", arguments->range, kRange)->required();
  AddSignedOptions(remove, &arguments->append, &arguments->force, kForceSigned);
  AddPagesAction(pages, arguments, PagesAction::kExtract, "extract",
                 "Make a document of some pages")
      ->add_option("RANGE", arguments->range, kRange)
      ->required();
}

void AddSubmitCommand(CLI::App* program, SubmitArguments* arguments) {
  CLI::App* command = program->add_subcommand(
      "submit", "Fill in a form on the web, send it, write it as the server's answer leaves it");
  command->add_option("URL", arguments->url, "Where the form is; http or https")->required();
  command->add_option("--button", arguments->button, "The full name of the button that sends it")
      ->required();
  command->add_option("NAME=VALUE", arguments->assignments,
                      "Full field names and their values; the first = ends the name");
  command
      ->add_option("-o,--output", arguments->output, "Where the result goes; - for standard output")
      ->required();
  command->add_option("--time-limit", arguments->timeLimit, "Seconds that one request may take")
      ->check(CLI::Range(1u, 86400u));
  AddSignedOptions(command, &arguments->append, &arguments->force, kForceSigned);
  command->add_flag("-v,--verbose", arguments->verbose, "Tell each address before it is used");
}

void AddActCommand(CLI::App* program, ActArguments* arguments) {
  CLI::App* command = program->add_subcommand(
      "act", "Perform what a click on a field sets off, as an action that hides or resets fields");
  command->add_option("FILE", arguments->file, "The PDF document; - for standard input")
      ->required();
  command->add_option("--field", arguments->field, "The full name of the field")->required();
  command
      ->add_option(
          "--trigger", arguments->trigger,
          "U the mouse button is released (usual), D pressed, E the mouse enters, X leaves")
      ->check(CLI::IsMember({"U", "D", "E", "X"}));
  command
      ->add_option("--widget", arguments->widget,
                   "Which of the field's places, counted from 1; usually the first with an action")
      ->check(CLI::Range(1u, 1000000u));
  command->add_option("-o,--output", arguments->output,
                      "Where the result goes; - for standard output; nothing is written without");
  AddSignedOptions(command, &arguments->append, &arguments->force, kForceSigned);
}

void AddResetCommand(CLI::App* program, ResetArguments* arguments) {
  CLI::App* command = program->add_subcommand(
      "reset", "Give fields the values that the form has for them from the start");
  command->add_option("FILE", arguments->file, "The PDF document; - for standard input")
      ->required();
  command->add_option("NAME", arguments->names,
                      "Full names of fields, or of groups of fields; all fields without");
  command
      ->add_option("-o,--output", arguments->output, "Where the result goes; - for standard output")
      ->required();
  AddSignedOptions(command, &arguments->append, &arguments->force, kForceSigned);
}

const std::string& FileOf(const CLI::App& program, const Arguments& arguments) {
  static const std::string none;
  if (program.got_subcommand("fields")) return arguments.fields.file;
  if (program.got_subcommand("fill")) return arguments.fill.file;
  if (program.got_subcommand("export")) return arguments.exporting.file;
  if (program.got_subcommand("import")) return arguments.importing.file;
  if (program.got_subcommand("render")) return arguments.render.file;
  if (program.got_subcommand("pages")) return arguments.pages.file;
  if (program.got_subcommand("submit")) return arguments.submit.url;
  if (program.got_subcommand("act")) return arguments.act.file;
  if (program.got_subcommand("reset")) return arguments.reset.file;
  return none;
}

// A word in the place of the command would otherwise not be named.
std::string WhatIsWrong(const CLI::App& program, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = program.remaining();
  if (program.get_subcommands().empty() && !unknown.empty()) {
    return "there is no command or option \"" + Printable(unknown.front()) + "\"";
  }
  return Printable(error.what());
}

int RunNamed(const CLI::App& program, const Arguments& arguments) {
  if (program.got_subcommand("fields")) return RunFields(arguments.fields);
  if (program.got_subcommand("fill")) return RunFill(arguments.fill);
  if (program.got_subcommand("export")) return RunExport(arguments.exporting);
  if (program.got_subcommand("import")) return RunImport(arguments.importing);
  if (program.got_subcommand("render")) return RunRender(arguments.render);
  if (program.got_subcommand("pages")) return RunPages(arguments.pages);
  if (program.got_subcommand("submit")) return RunSubmit(arguments.submit);
  if (program.got_subcommand("act")) return RunAct(arguments.act);
  if (program.got_subcommand("reset")) return RunReset(arguments.reset);
  return RunPlugins();
}

// What plug-ins failed in may be why a command fails.
void TellOfPlugIns() {
  for (const std::string& why : PlugInWarnings()) PrintWarning("", why);
}

int RunCommand(const CLI::App& program, const Arguments& arguments) {
  UsePassword(arguments.passwordFile.empty() ? arguments.password
                                             : PasswordFromFile(arguments.passwordFile));
  std::vector<std::string> plugIns = arguments.plugIns;
  if (program.got_subcommand("submit")) plugIns.insert(plugIns.begin(), LinkPlugInFile());
  const Session session(plugIns, arguments.yes ? Answers::kAgreeing : Answers::kCautious);
  try {
    const int status = RunNamed(program, arguments);
    if (status == kExitError) TellOfPlugIns();
    return status;
  } catch (const HostFailure&) {
    TellOfPlugIns();
    throw;
  }
}

// What the host cannot know: how this program is given a password, and that a person may not know
// what a dictionary without an end comes from.
std::string HintFor(const HostFailure& failure) {
  if (failure.code == kErrorPassword) return " (--password or --password-file)";
  if (failure.code == kErrorBadObject && failure.offset != kNoOffset) {
    return "; the file is damaged there";
  }
  return "";
}

int Run(int argc, char** argv) {
  CLI::App program("Lists, fills and draws the forms of PDF documents.", "quillon");
  program.set_version_flag("--version", "quillon " QUILLON_VERSION);
  program.require_subcommand(1);
  program.footer(
      "Exit status: 0 done, 2 error (nothing was written), 3 done with warnings, or some records\n"
      "failed.\n"
      "Texts are UTF-8.");
  Arguments arguments;
  program.add_option("--plugin", arguments.plugIns, "Load this plug-in module too; repeatable")
      ->allow_extra_args(false);
  program.add_flag("--yes", arguments.yes, "Answer Yes to every question, which is No otherwise");
  CLI::Option* password =
      program.add_option("--password", arguments.password, "What encrypted documents open with");
  program
      .add_option("--password-file", arguments.passwordFile,
                  "The same, from the first line of a file, where no list of processes shows it")
      ->excludes(password);
  AddFieldsCommand(&program, &arguments);
  AddFillCommand(&program, &arguments);
  AddExportCommand(&program, &arguments.exporting);
  AddImportCommand(&program, &arguments.importing);
  AddRenderCommand(&program, &arguments);
  AddPagesCommand(&program, &arguments.pages);
  AddSubmitCommand(&program, &arguments.submit);
  AddActCommand(&program, &arguments.act);
  AddResetCommand(&program, &arguments.reset);
  program.add_subcommand("plugins", "Tell what each plug-in that is loaded registered");
  for (CLI::App* command : program.get_subcommands({})) command->fallthrough();
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& request) {  // --help, --version
    return program.exit(request);
  } catch (const CLI::ParseError& error) {
    PrintError("", WhatIsWrong(program, error) + " (quillon --help tells more)");
    return kExitError;
  }
  const std::string& file = FileOf(program, arguments);
  try {
    return RunCommand(program, arguments);
  } catch (const HostFailure& failure) {
    PrintError(file, Describe(failure) + HintFor(failure));
  } catch (const std::bad_alloc&) {
    PrintError(file, "there is not enough memory");
  }
  return kExitError;
}

}  // namespace
}  // namespace quillon::app

int main(int argc, char** argv) {
  // A limit on the size of files is then an error like a full disk, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return quillon::app::Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillon: %s\n", error.what());
    return quillon::app::kExitError;
  }
}
