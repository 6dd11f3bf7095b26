#include "plugin/resources/error_texts.h"

#include "plugin/resources/resources.h"

namespace quillform {

OwnErrors ownErrors{};

namespace {

constexpr std::size_t kErrorTextSize = 257;

struct ErrorText {
  std::uint32_t stringId;
  FailureCode OwnErrors::*code;
};

constexpr ErrorText kErrorTexts[] = {
    {78, &OwnErrors::invalidFdf},
    {80, &OwnErrors::exportFailed},
    {81, &OwnErrors::openUrlFailed},
    {86, &OwnErrors::requiredFieldEmpty},
};

}  // namespace

void RegisterErrorTexts() {
  for (const ErrorText& error : kErrorTexts) {
    char text[kErrorTextSize];
    LoadLocalString(error.stringId, text, sizeof text);
    ownErrors.*error.code = Support->RegisterErrorString(quillon::kSeverityError, text);
  }
}

}  // namespace quillform
