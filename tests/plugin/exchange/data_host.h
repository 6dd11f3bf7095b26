// What the tests of form data files share: messages that are answered, and files of a test's own.
#pragma once

#include <string>
#include <vector>

#include "plugin/host/owned_files.h"
#include "tests/plugin/model/model_host.h"
#include "tests/support/temporary_folder.h"

namespace quillform {

struct DataHost : ModelHost {
  DataHost();
  ~DataHost() override;

  // Writes a file into the test's folder and answers its path.
  std::string Write(const char* name, const std::string& bytes);
  bool Exists(const std::string& file);

  // The path of a file; released with the answer.
  OwnedPath PathOf(const std::string& file);

  // An FDF file with these entries of its FDF dictionary, and one with these fields.
  static std::string FdfWith(const std::string& entries);
  static std::string FdfOf(const std::string& fields) {
    return FdfWith("/Fields [" + fields + "]");
  }

  // Imports an FDF with these fields; true when they were values only.
  bool Import(const std::string& fields);

  // The FDF dictionary that an export gives.
  std::string Exported(bool exportCommand, bool includeEmpty = false,
                       ObjectHandle list = quillon::kNullObject, bool inclusion = true);

  std::string ValueOf(const char* name);

  quillon::test::TemporaryFolder folder;
  std::vector<std::string> messages;
  std::uint32_t answer = 0;     // to questions; 0: the cautious one
  std::string chosenFile = {};  // what the user picks when asked for a file; empty: cancels
  int questions = 0;            // for a file
};

}  // namespace quillform
