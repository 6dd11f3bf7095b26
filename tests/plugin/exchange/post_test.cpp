#include "plugin/exchange/post.h"

#include <gtest/gtest.h>

#include "plugin/host/owned_files.h"
#include "plugin/resources/error_texts.h"
#include "quillon/objects/pdf_file.h"
#include "tests/plugin/exchange/url_files.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

struct PostTest : ModelHost {
  PostTest() {
    const std::string pdf = quillon::test::FormPdf(
        {}, {.objects = {"<< /S /SubmitForm /F << /FS /URL /F (send) >> >>",
                         "<< /S /SubmitForm /F << /FS /URL /F (ftp://elsewhere) >> >>",
                         "<< /S /SubmitForm >>"}});
    view = urls.Open("http://host/forms/a.pdf", pdf);
    doc = Viewer->DocOf(view);
  }

  ActionHandle Action(std::uint32_t index) {
    const std::uint32_t number = quillon::test::kFirstField + index;
    return Document->ActionFromObject(quillon::ObjectByNumber(Document->ObjectDocOf(doc), number));
  }

  FailureCode Post(const std::string& body, std::uint32_t action = 0) {
    const OwnedPath path(Support->TempPath(nullptr));
    FileHandle file = nullptr;
    Support->OpenFile(path.get(), quillon::kOpenReplace, &file);
    Support->WriteFile(file, body.data(), static_cast<std::uint32_t>(body.size()));
    Support->SetFilePosition(file, 0);
    const FailureCode code =
        CodeOf([&] { PostFormData(view, Action(action), file, "text/plain"); });
    Support->CloseFile(file);
    Support->DeleteFile(path.get());
    return code;
  }

  UrlFiles urls;
};

std::string Header(std::size_t length) {
  return "Content-Type: text/plain\nContent-Length: " + std::to_string(length) + "\n\n";
}

TEST_F(PostTest, header_and_body_go_to_the_address_relative_to_the_form) {
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(Post("a=1&b=2"), 0);
  ASSERT_EQ(urls.sent.size(), 1u);
  EXPECT_EQ(urls.sent[0].url, "http://host/forms/send");
  EXPECT_EQ(urls.sent[0].Text(), Header(7) + "a=1&b=2");
  EXPECT_TRUE(urls.sent[0].closed);
  EXPECT_EQ(Post(""), 0);
  EXPECT_EQ(urls.sent[1].Text(), Header(0));
}

TEST_F(PostTest, a_short_body_goes_out_with_the_header_in_one_write) {
  const std::size_t room = 1025 - Header(900).size();
  for (const std::size_t size : {room, room + 1, room + 1024, room + 1025, room + 1026}) {
    std::string body;
    while (body.size() < size) body += static_cast<char>('a' + body.size() % 26);
    urls.sent.clear();
    ASSERT_EQ(Post(body), 0);
    const std::vector<std::string>& pieces = urls.sent[0].pieces;
    EXPECT_EQ(urls.sent[0].Text(), Header(size) + body);
    const std::size_t head = Header(size).size();
    EXPECT_EQ(pieces[0].size(), std::min<std::size_t>(1025, head + size));
    EXPECT_EQ(pieces.size(), 1 + (head + size - 1) / 1025) << size;
  }
}

TEST_F(PostTest, an_address_that_cannot_be_opened_is_an_error_of_its_own) {
  EXPECT_EQ(Post("x", 1), ownErrors.openUrlFailed) << "no address of the web";
  EXPECT_EQ(Post("x", 2), ownErrors.openUrlFailed) << "no address at all";
  urls.openFailure = quillon::kErrorOpenFile;
  EXPECT_EQ(Post("x"), ownErrors.openUrlFailed);
  EXPECT_TRUE(urls.sent.empty());
}

TEST_F(PostTest, what_the_server_or_the_line_fails_in_reaches_the_caller) {
  urls.closeFailure = quillon::kErrorNotOffered;
  EXPECT_EQ(Post("x"), quillon::kErrorNotOffered);
  urls.room = 10;
  EXPECT_EQ(Post("x"), quillon::kErrorWriteFile);
  EXPECT_TRUE(urls.sent[1].closed);
}

}  // namespace
}  // namespace quillform
