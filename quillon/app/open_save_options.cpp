#include "quillon/app/open_save_options.h"

#include <filesystem>
#include <system_error>

#include "quillon/app/session.h"
#include "quillon/app/signatures.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"

namespace quillon::app {
namespace {

std::string givenPassword;

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code ignored;
  return !a.empty() && std::filesystem::equivalent(a, b, ignored);
}

}  // namespace

std::string PasswordFromFile(const std::string& file) {
  std::string text;
  try {
    text = ReadWhole(file);
  } catch (const HostFailure& failure) {
    Fail(failure.code, "the password file " + file + " cannot be read");
  }
  return text.substr(0, text.find_first_of("\r\n"));
}

void UsePassword(const std::string& password) { givenPassword = password; }

OpenOptions OptionsForOpening() {
  OpenOptions options;
  options.password = givenPassword;
  return options;
}

void CheckSignatures(DocHandle doc, const SavingMode& mode, DocumentChange change) {
  const SignatureRules rules = RulesOfSignatures(doc);
  if (!rules.isSigned || mode.force) return;
  if (!mode.append) {
    Fail(kErrorOpenDocument,
         "the document is signed, and writing it anew would make its signatures invalid; --append "
         "writes the changes behind what was signed, --force writes it anew all the same");
  }
  if (rules.permitsNothing || (rules.permitsNoPages && change == DocumentChange::kPages)) {
    Fail(
        kErrorOpenDocument,
        std::string("the document was certified, and its signature permits ") +
            (rules.permitsNothing ? "no change" : "no change of its pages") +
            ": even one that is written behind what was signed makes it invalid; --force writes it "
            "all the same");
  }
}

void PrepareWriting(DocView view, const SavingMode& mode) {
  PrepareSave(view);
  if (mode.append && !mode.force) CheckLockedFields(viewer::DocOf(view));
}

void WriteDocument(DocView view, const std::string& target, const SavingMode& mode) {
  PrepareWriting(view, mode);
  const DocHandle doc = viewer::DocOf(view);
  SaveOptions options;
  options.append = mode.append;
  if (target == kStandardStream) {
    WriteStandardOutput(DocumentToBytes(doc, options));
  } else {
    options.keepAll = IsSameFile(DocumentPath(doc), target);
    SaveDocumentFile(doc, target, options);
  }
}

}  // namespace quillon::app
