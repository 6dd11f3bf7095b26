// A form is fetched from, and sent to, the web server that comes with Python, whose script answers
// with form data.
#include <signal.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

// A program that serves in the background until the record's end.
struct Server {
  // The port is the number that follows `mark` in the first lines that the program prints.
  Server(const std::string& command, const std::string& mark)
      : output(popen(("echo $$; exec " + command + " 2>/dev/null </dev/null").c_str(), "re")) {
    std::string text;
    for (int byte = 0; port == 0 && (byte = std::fgetc(output)) != EOF;) {
      text += static_cast<char>(byte);
      const std::size_t place = text.find(mark);
      if (place == std::string::npos || std::isdigit(byte) != 0) continue;
      port = std::atoi(text.c_str() + place + mark.size());
    }
    process = std::atoi(text.c_str());
  }
  ~Server() {
    if (process > 0) kill(process, SIGTERM);
    pclose(output);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::string Url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port) + path;
  }

  std::FILE* output;
  int process = 0;
  int port = 0;
};

std::string Button(const std::string& name, const std::string& flags, const std::string& target) {
  return WidgetField(
      "Btn", name,
      "/Ff 65536 /A << /S /SubmitForm " + flags + " /F << /FS /URL /F (" + target + ") >> >>");
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
    return FormPdf({WidgetField("Tx", "name"), WidgetField("Tx", "city", "/V (Oslo)"),
                    WidgetField("Tx", "pin", "/Ff 8192"),
                    WidgetField("Tx", "internal", "/Ff 4 /V (x)"), WidgetField("Tx", "reply"),
                    WidgetField("Tx", "seen"), WidgetField("Tx", "kind"), Button("fdf", "", answer),
                    Button("pairs", "/Flags 4", answer), Button("page", "/Flags 4", "/form.pdf"),
                    WidgetField("Tx", "must", "/Ff 2 " + mustEntries)});
  }

  ProcessResult Open(const std::string& url) {
    return Quillon({"submit", url, "--button", "fdf", "-o", out}, {}, {"no_proxy=*"});
  }

  ProcessResult Submit(const std::string& button, const std::vector<std::string>& more = {},
                       const char* form = "/form.pdf") {
    std::vector<std::string> command = {"submit",     server.Url(form), "--button", button,
                                        "name=Ann B", "pin=1234",       "-o",       out};
    command.insert(command.end(), more.begin(), more.end());
    return Quillon(command, {}, {"no_proxy=*"});
  }

  TemporaryFolder folder;
  std::string out = folder.File("out.pdf");
  Server server{"python3 -u -m http.server 0 --bind 127.0.0.1 --cgi --directory '" +
                    folder.path.string() + "'",
                "port "};
};

TEST_F(SubmitCommand, TheAnswerFillsTheForm) {
  ASSERT_NE(server.port, 0);
  const std::pair<const char*, const char*> buttons[] = {
      {"fdf", "application/vnd.fdf"}, {"pairs", "application/x-www-form-urlencoded"}};
  for (const auto& [button, kind] : buttons) {
    // A password goes neither over the line nor into the file; the latter deserves a word.
    ExpectEnd(Submit(button), 3, {"pin: a password is not kept"});
    EXPECT_EQ(ValueOf(out, "reply"), "Thank you, Ann B");
    EXPECT_EQ(ValueOf(out, "seen"), "city=Oslo must=set name=Ann B");
    EXPECT_EQ(ValueOf(out, "kind"), kind);
    EXPECT_EQ(ValueOf(out, "name"), "Ann B");
    EXPECT_EQ(ValueOf(out, "pin"), nullptr);
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
  const auto refused = [&](const ProcessResult& result, const char* text) {
    ExpectEnd(result, 2, {text});
    EXPECT_FALSE(std::filesystem::exists(out)) << text;
  };
  refused(Submit("page"), "status 501");  // the server takes forms in its scripts only
  refused(Submit("pairs", {}, "/strict.pdf"), "The required field, \"must\"");
  refused(Submit("name"), "sends nothing");
  refused(Submit("nothing"), "buttons that send the form: fdf, pairs, page");
  refused(Submit("fdf", {"nmae=x"}), "did you mean name");
  // Addresses that lead to no form.
  refused(Open(server.Url("/missing.pdf")), "status 404");
  refused(Open(server.Url("/")), "text/html");
  refused(Open(folder.File("form.pdf")), "http://");
  refused(Open("file://" + folder.File("form.pdf")), "http://");
}

TEST_F(SubmitCommand, AServerWhoseCertificateProvesNothingIsNotTrusted) {
  if (!HasTool("openssl")) GTEST_SKIP() << "openssl is not installed";
  const std::string key = folder.File("key.pem"), certificate = folder.File("certificate.pem");
  ASSERT_EQ(RunProcess({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj",
                        "/CN=127.0.0.1", "-days", "2", "-keyout", key, "-out", certificate})
                .status,
            0);
  const Server secure(
      "openssl s_server -accept 127.0.0.1:0 -key '" + key + "' -cert '" + certificate + "' -www",
      "127.0.0.1:");
  ASSERT_NE(secure.port, 0);
  ExpectEnd(Open("https://127.0.0.1:" + std::to_string(secure.port) + "/"), 2,
            {"certificate does not prove"});
}

}  // namespace
}  // namespace quillon::test
