// The program is killed, and the disk fills up, at each of the system calls by which it changes
// files: the old file is left, or the new one, whole.
#include <cerrno>
#include <cstring>
#include <map>

#include "tests/end_to_end/fields_of.h"
#include "tests/end_to_end/system_calls.h"

namespace quillon::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNoInterruption = "this system lets no process stop another";

using Contents = std::map<std::string, std::string>;

Contents ContentsOf(const fs::path& folder) {
  Contents contents;
  for (const auto& entry : fs::directory_iterator(folder)) {
    contents[entry.path().filename().string()] = ReadFile(entry.path().string());
  }
  return contents;
}

// Of a run that came to its end only the new one is good.
void ExpectOldOrNew(const std::string& file, bool isNew) {
  if (!isNew && ReadFile(file) == ReadFile(ExampleForm())) return;
  EXPECT_EQ(ValueOf(file, "remarks"), "new");
  if (HasTool("qpdf")) ExpectEnd(RunProcess({"qpdf", "--check", file}), 0);
}

TEST(Interrupted, KilledAtAnyCallTheOldOrTheNewFileIsThere) {
  if (!CanInterrupt()) GTEST_SKIP() << kNoInterruption;
  for (const bool append : {false, true}) {
    bool killed = true;
    std::size_t points = 0;
    while (killed) {
      SCOPED_TRACE("killed before call " + std::to_string(++points));
      const TemporaryFolder folder;
      const std::string file = folder.File("form.pdf");
      WriteFile(file, ReadFile(ExampleForm()));
      std::vector<std::string> fill = {"fill", file, "remarks=new", "--in-place"};
      if (append) fill.emplace_back("--append");
      const InterruptedRun run = RunInterrupted(fill, folder.path, {points, 0});
      killed = run.calls.size() == points;
      ExpectEnd(run.result, killed ? 128 + SIGKILL : 0);
      ExpectOldOrNew(file, !killed);
      EXPECT_LE(folder.FileCount(), killed ? 2u : 1u);
      // What was left behind is in nobody's way.
      ExpectEnd(Quillon(fill), 0);
      EXPECT_EQ(ValueOf(file, "remarks"), "new");
    }
    EXPECT_GE(points, 5u) << "opened, written, flushed, closed, renamed";
  }
}

struct Failure {
  const char* call;
  int error;
  const char* advice;
};
constexpr Failure kFailures[] = {
    {"open", ENOSPC, "Make room"},     {"open", EDQUOT, "Make room"},
    {"open", EROFS, "another folder"}, {"open", EACCES, "permissions"},
    {"write", ENOSPC, "Make room"},    {"write", EFBIG, "limit"},
    {"flush", ENOSPC, "Make room"},    {"flush", EIO, "may be failing"},
    {"close", EDQUOT, "Make room"},    {"rename", EROFS, "another folder"},
    {"rename", EACCES, "permissions"},
};

// Each command that writes, in a folder with form.pdf, old.pdf and rows.csv. What it writes is
// `output`.
struct Writing {
  const char* name;
  std::vector<std::string> arguments;  // those with a slash are files of the folder
  const char* output;
};
const std::vector<Writing>& Writings() {
  static const std::vector<Writing> all = {
      {"FillInPlace", {"fill", "/form.pdf", "remarks=new", "--in-place"}, "form.pdf"},
      {"AppendInPlace", {"fill", "/form.pdf", "remarks=new", "--in-place", "--append"}, "form.pdf"},
      {"FillOver", {"fill", "/form.pdf", "remarks=new", "-o", "/old.pdf"}, "old.pdf"},
      {"FillAnew", {"fill", "/form.pdf", "remarks=new", "-o", "/new.pdf"}, "new.pdf"},
      {"Records", {"fill", "/form.pdf", "--records", "/rows.csv", "-o", "/{remarks}.pdf"}, "a.pdf"},
      {"ExportForm", {"export", "/form.pdf", "-o", "/new.fdf"}, "new.fdf"},
      {"ExportTable", {"export", "/form.pdf", "-o", "/old.csv"}, "old.csv"},
      {"Import", {"import", "/form.pdf", "/rows.csv", "-o", "/old.pdf"}, "old.pdf"},
      {"Reset", {"reset", "/form.pdf", "-o", "/old.pdf"}, "old.pdf"},
      {"Pages", {"pages", "insert", "/form.pdf", "/form.pdf", "-o", "/new.pdf"}, "new.pdf"},
      {"Render", {"render", "/form.pdf", "--dpi", "10", "-o", "/new.png"}, "new.png"},
  };
  return all;
}

struct Failing : testing::TestWithParam<Writing> {
  void SetUp() override {
    if (!CanInterrupt()) GTEST_SKIP() << kNoInterruption;
    WriteFile(folder.File("form.pdf"), ReadFile(ExampleForm()));
    WriteFile(folder.File("old.pdf"), "precious");
    WriteFile(folder.File("old.csv"), "precious");
    WriteFile(folder.File("rows.csv"), "remarks\na\n");
    for (const std::string& argument : GetParam().arguments) {
      arguments.push_back(argument[0] == '/' ? folder.File(argument.substr(1)) : argument);
    }
  }

  // The run must tell what could not be written, where, why and what to do, and change nothing.
  void ExpectRefusal(std::size_t call, const Failure& failure) {
    SCOPED_TRACE(std::string(failure.call) + ", call " + std::to_string(call) + ": " +
                 std::strerror(failure.error));
    const Contents before = ContentsOf(folder.path);
    ExpectEnd(RunInterrupted(arguments, folder.path, {call, failure.error}).result, 2,
              {folder.File(GetParam().output), failure.advice, std::strerror(failure.error)});
    EXPECT_EQ(ContentsOf(folder.path), before);
  }

  TemporaryFolder folder;
  std::vector<std::string> arguments;
};

TEST_P(Failing, AtAnyCallIsAClearErrorAndChangesNothing) {
  const Contents before = ContentsOf(folder.path);
  const std::vector<std::string> calls = RunInterrupted(arguments, folder.path, {}).calls;
  EXPECT_NE(ContentsOf(folder.path), before);
  for (const auto& [name, bytes] : ContentsOf(folder.path)) fs::remove(folder.path / name);
  for (const auto& [name, bytes] : before) WriteFile(folder.File(name), bytes);
  EXPECT_GE(calls.size(), 4u) << "opened, written, closed, renamed";
  for (std::size_t i = 0; i < calls.size(); ++i) {
    for (const Failure& failure : kFailures) {
      if (calls[i] == failure.call) ExpectRefusal(i + 1, failure);
    }
  }
}

std::string NameOfWriting(const testing::TestParamInfo<Writing>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Commands, Failing, testing::ValuesIn(Writings()), NameOfWriting);

// A real disk without room, and a real limit that is reached in the midst of the file.
TEST(FullDisk, IsAClearError) {
  const TemporaryFolder folder;
  const std::string file = folder.File("form.pdf");
  WriteFile(file, ReadFile(ExampleForm()));
  const std::vector<std::vector<std::string>> commands = {
      {QUILLON_PROGRAM, "fill", file, "remarks=new", "-o", "/dev/full"},
      {QUILLON_PROGRAM, "export", file, "-o", "/dev/full"},
      {"sh", "-c", "exec \"$@\" >/dev/full", "sh", QUILLON_PROGRAM, "fill", file, "remarks=x", "-o",
       "-"},
      {"sh", "-c", "exec \"$@\" >/dev/full", "sh", QUILLON_PROGRAM, "fields", file},
      {"sh", "-c", "ulimit -f 4; exec \"$@\"", "sh", QUILLON_PROGRAM, "fill", file, "remarks=x",
       "--in-place"},
  };
  for (const std::vector<std::string>& command : commands) {
    SCOPED_TRACE(testing::PrintToString(command));
    ExpectEnd(RunProcess(command, {}, {kLeakOptions}), 2, {"cannot be written: "});
    EXPECT_EQ(ReadFile(file), ReadFile(ExampleForm()));
    EXPECT_EQ(folder.FileCount(), 1u);
  }
}

}  // namespace
}  // namespace quillon::test
