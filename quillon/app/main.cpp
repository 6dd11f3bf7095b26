// The program `quillon`: reads the command line, starts the host, runs one command.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/session.h"

namespace quillon::app {
namespace {

struct Arguments {
  std::vector<std::string> plugIns;
  bool yes = false;
  FieldsArguments fields;
  FillArguments fill;
  RenderArguments render;
  PagesArguments pages;
};

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
  command->add_flag("--force", fill.force, "Fill read-only fields too");
  command->callback([&fill] {
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
  AddPagesAction(pages, arguments, PagesAction::kDelete, "delete", "Delete pages")
      ->add_option("RANGE", arguments->range, kRange)
      ->required();
  AddPagesAction(pages, arguments, PagesAction::kExtract, "extract",
                 "Make a document of some pages")
      ->add_option("RANGE", arguments->range, kRange)
      ->required();
}

const std::string& FileOf(const CLI::App& program, const Arguments& arguments) {
  static const std::string none;
  if (program.got_subcommand("fields")) return arguments.fields.file;
  if (program.got_subcommand("fill")) return arguments.fill.file;
  if (program.got_subcommand("render")) return arguments.render.file;
  if (program.got_subcommand("pages")) return arguments.pages.file;
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

int RunCommand(const CLI::App& program, const Arguments& arguments) {
  const Session session(arguments.plugIns, arguments.yes ? Answers::kAgreeing : Answers::kCautious);
  if (program.got_subcommand("fields")) return RunFields(arguments.fields);
  if (program.got_subcommand("fill")) return RunFill(arguments.fill);
  if (program.got_subcommand("render")) return RunRender(arguments.render);
  if (program.got_subcommand("pages")) return RunPages(arguments.pages);
  return RunPlugins();
}

int Run(int argc, char** argv) {
  CLI::App program("Lists, fills and draws the forms of PDF documents.", "quillon");
  program.set_version_flag("--version", "quillon " QUILLON_VERSION);
  program.require_subcommand(1);
  program.footer(
      "Exit status: 0 done, 2 error (nothing was written), 3 done with warnings.\n"
      "Texts are UTF-8.");
  Arguments arguments;
  program.add_option("--plugin", arguments.plugIns, "Load this plug-in module too; repeatable")
      ->allow_extra_args(false);
  program.add_flag("--yes", arguments.yes, "Answer Yes to every question, which is No otherwise");
  AddFieldsCommand(&program, &arguments);
  AddFillCommand(&program, &arguments);
  AddRenderCommand(&program, &arguments);
  AddPagesCommand(&program, &arguments.pages);
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
    PrintError(file, Describe(failure));
  } catch (const std::bad_alloc&) {
    PrintError(file, "there is not enough memory");
  }
  return kExitError;
}

}  // namespace
}  // namespace quillon::app

int main(int argc, char** argv) {
  try {
    return quillon::app::Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillon: %s\n", error.what());
    return quillon::app::kExitError;
  }
}
