// A form is fetched from, and sent to, the web server that comes with Python, whose script answers
// with form data.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

// A program that serves in the background until the record's end.
struct Server {
  // The port is the number that follows `mark` in the first lines that the program prints.
  Server(std::vector<std::string> command, const std::string& mark) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    process = fork();
    if (process == 0) {
      dup2(ends[1], STDOUT_FILENO);
      const int nothing = open("/dev/null", O_RDWR);
      dup2(nothing, STDERR_FILENO);
      std::vector<char*> words;
      for (std::string& word : command) words.push_back(word.data());
      words.push_back(nullptr);
      execvp(words[0], words.data());
      _exit(127);
    }
    close(ends[1]);
    output = ends[0];
    std::string text;
    for (char byte = 0; read(output, &byte, 1) == 1;) {
      text += byte;
      const std::size_t place = text.find(mark);
      if (place == std::string::npos || (byte >= '0' && byte <= '9')) continue;
      port = std::atoi(text.c_str() + place + mark.size());
      if (port != 0) break;
    }
  }
  ~Server() {
    if (process > 0) {
      kill(process, SIGTERM);
      waitpid(process, nullptr, 0);
    }
    if (output >= 0) close(output);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::string Url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port) + path;
  }

  pid_t process = -1;
  int output = -1;
  int port = 0;
};

std::string Button(const std::string& name, const std::string& flags, const std::string& target) {
  return WidgetField(
      "Btn", name,
      "/Ff 65536 /A << /S /SubmitForm " + flags + " /F << /FS /URL /F (" + target + ") >> >>");
}

std::string TextField(const std::string& name, const std::string& entries = "") {
  return WidgetField("Tx", name, entries);
}

struct SubmitCommand : testing::Test {
  SubmitCommand() {
    // The server may run the script as somebody who owns nothing.
    std::filesystem::permissions(folder.path, std::filesystem::perms(0755));
    std::filesystem::copy(WEB_FOLDER, folder.path, std::filesystem::copy_options::recursive);
    WriteFile(folder.File("form.pdf"), Form("/V (set)"));
    WriteFile(folder.File("strict.pdf"), Form(""));
  }

  // `mustEntries` are those of a field that is required.
  static std::string Form(const std::string& mustEntries) {
    const std::string answer = "/cgi-bin/answer.py";
    return FormPdf({TextField("name"), TextField("city", "/V (Oslo)"), TextField("pin", "/Ff 8192"),
                    TextField("internal", "/Ff 4 /V (x)"), TextField("reply"), TextField("seen"),
                    TextField("kind"), Button("fdf", "", answer),
                    Button("pairs", "/Flags 4", answer), Button("page", "/Flags 4", "/form.pdf"),
                    TextField("must", "/Ff 2 " + mustEntries)});
  }

  ProcessResult Submit(const std::string& button, const std::vector<std::string>& more = {},
                       const char* form = "/form.pdf") {
    std::vector<std::string> command = {"submit",     server.Url(form), "--button", button,
                                        "name=Ann B", "pin=1234",       "-o",       out};
    command.insert(command.end(), more.begin(), more.end());
    return Quillon(command, {}, {"no_proxy=*"});
  }

  TempFolder folder;
  std::string out = folder.File("out.pdf");
  Server server{{"python3", "-u", "-m", "http.server", "0", "--bind", "127.0.0.1", "--cgi",
                 "--directory", folder.path.string()},
                "port "};
};

TEST_F(SubmitCommand, TheAnswerFillsTheForm) {
  ASSERT_NE(server.port, 0);
  const struct {
    const char* button;
    const char* kind;
  } cases[] = {{"fdf", "application/vnd.fdf"}, {"pairs", "application/x-www-form-urlencoded"}};
  for (const auto& one : cases) {
    const ProcessResult result = Submit(one.button);
    // A password goes neither over the line nor into the file; the latter deserves a word.
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_NE(result.err.find("pin: a password is not kept"), std::string::npos) << result.err;
    const Json fields = FieldsOf(out);
    EXPECT_EQ(FieldNamed(fields, "reply")["value"], "Thank you, Ann B");
    EXPECT_EQ(FieldNamed(fields, "seen")["value"], "city=Oslo must=set name=Ann B");
    EXPECT_EQ(FieldNamed(fields, "kind")["value"], one.kind);
    EXPECT_EQ(FieldNamed(fields, "name")["value"], "Ann B");
    EXPECT_EQ(FieldNamed(fields, "pin")["value"], nullptr);
    EXPECT_EQ(ReadFile(out).find("1234"), std::string::npos);
    std::filesystem::remove(out);
  }
}

TEST_F(SubmitCommand, EachAddressIsToldBeforeItIsUsed) {
  const ProcessResult result = Submit("pairs", {"--verbose"});
  const std::size_t get = result.err.find("GET " + server.Url("/form.pdf"));
  const std::size_t post = result.err.find("POST " + server.Url("/cgi-bin/answer.py"));
  EXPECT_LT(get, post) << result.err;
  EXPECT_NE(post, std::string::npos) << result.err;
}

TEST_F(SubmitCommand, WhatCannotBeSentLeavesNoFile) {
  const struct {
    const char* form;
    const char* button;
    std::vector<std::string> more;
    const char* text;
  } cases[] = {
      {"/form.pdf", "page", {}, "status 501"},  // the server takes forms in its scripts only
      {"/strict.pdf", "pairs", {}, "The required field, \"must\""},
      {"/form.pdf", "name", {}, "sends nothing"},
      {"/form.pdf", "nothing", {}, "buttons that send the form: fdf, pairs, page"},
      {"/form.pdf", "fdf", {"nmae=x"}, "did you mean name"},
  };
  for (const auto& one : cases) {
    const ProcessResult result = Submit(one.button, one.more, one.form);
    EXPECT_EQ(result.status, 2) << one.text;
    EXPECT_NE(result.err.find(one.text), std::string::npos) << one.text << " in\n" << result.err;
    EXPECT_FALSE(std::filesystem::exists(out)) << one.text;
  }
}

TEST_F(SubmitCommand, AddressesThatLeadToNoFormAreErrors) {
  const auto open = [&](const std::string& url) {
    const ProcessResult result =
        Quillon({"submit", url, "--button", "fdf", "-o", out}, {}, {"no_proxy=*"});
    EXPECT_EQ(result.status, 2) << url;
    EXPECT_FALSE(std::filesystem::exists(out));
    return result.err;
  };
  EXPECT_NE(open(server.Url("/missing.pdf")).find("status 404"), std::string::npos);
  EXPECT_NE(open(server.Url("/")).find("text/html"), std::string::npos);
  EXPECT_NE(open(folder.File("form.pdf")).find("http://"), std::string::npos);
  EXPECT_NE(open("file://" + folder.File("form.pdf")).find("http://"), std::string::npos);
}

TEST_F(SubmitCommand, AServerWhoseCertificateProvesNothingIsNotTrusted) {
  if (!HasTool("openssl")) GTEST_SKIP() << "openssl is not installed";
  const std::string key = folder.File("key.pem"), certificate = folder.File("certificate.pem");
  ASSERT_EQ(RunProcess({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj",
                        "/CN=127.0.0.1", "-days", "2", "-keyout", key, "-out", certificate})
                .status,
            0);
  const Server secure(
      {"openssl", "s_server", "-accept", "127.0.0.1:0", "-key", key, "-cert", certificate, "-www"},
      "127.0.0.1:");
  ASSERT_NE(secure.port, 0);
  const std::string url = "https://127.0.0.1:" + std::to_string(secure.port) + "/";
  const ProcessResult result =
      Quillon({"submit", url, "--button", "fdf", "-o", out}, {}, {"no_proxy=*"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("certificate does not prove"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace quillon::test
