// The host while the program runs a command, and the documents that it works on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillon/app/console.h"
#include "quillon/document/open_document.h"

namespace quillon::app {

inline constexpr const char* kStandardStream = "-";

// How the questions of plug-ins are answered.
enum class Answers {
  kCautious,  // so that the least happens
  kAgreeing,  // so that the command goes on
};

// Starts the viewer with the forms plug-in that lies beside the program and the plug-in modules
// given; ends it again. What plug-ins have to say goes to the standard error stream.
struct Session {
  explicit Session(const std::vector<std::string>& plugIns, Answers answers = Answers::kCautious);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

// The plug-in that reaches the web, which only some commands need. Throws HostFailure when it does
// not lie beside the program.
std::string LinkPlugInFile();

// What was wrong with the file but could be lived with.
std::vector<std::string> FileWarnings(DocHandle doc);

// What plug-ins failed in so far, start-up included, where the host goes on without them.
std::vector<std::string> PlugInWarnings();

// Ends a command that writes nothing: prints what is wrong with the file, which may be why, then
// the problems and what therefore did not happen; answers the exit status.
ExitStatus FailDocument(const std::string& file, DocHandle doc,
                        const std::vector<std::string>& problems,
                        std::string_view outcome = "nothing was written");

// Ends a command that is done: prints the warnings of the file, the command's own, then those of
// plug-ins; answers the exit status.
ExitStatus FinishDocument(const std::string& file, DocHandle doc,
                          const std::vector<std::string>& own = {});

// A document in a view: only then are plug-ins told of its opening and closing. "-" is the standard
// input. For a file of form data (FDF), the form plug-in finds the form that it belongs to and
// fills it; why there is none, it has then told.
struct OpenedView {
  explicit OpenedView(const std::string& file);
  explicit OpenedView(DocHandle document);  // takes it over
  ~OpenedView();
  OpenedView(const OpenedView&) = delete;
  OpenedView& operator=(const OpenedView&) = delete;

  DocView view;
  DocHandle doc;
  bool throughData;  // the file is one of form data
};

// For commands that write no document: has plug-ins read its form even when its permissions do not
// allow filling it in.
void PermitReading(DocHandle doc);

// All of the standard input.
std::string ReadStandardInput();

// All of a file, or of the standard input for "-". Throws HostFailure.
std::string ReadWhole(const std::string& file);

// They throw HostFailure when not everything could be written. A file that is replaced is replaced
// only when the new one is complete.
void WriteFileWhole(const std::string& file, const std::string& bytes);
void WriteStandardOutput(const std::string& bytes);

}  // namespace quillon::app
