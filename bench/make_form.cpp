// quillform_make_form FIELDS PAGES FILE: writes a large form, for measuring by hand.
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/form_writer.h"

int main(int argc, char** argv) {
  const long fields = argc == 4 ? std::atol(argv[1]) : 0;
  const long pages = argc == 4 ? std::atol(argv[2]) : 0;
  if (fields < 1 || pages < 1 || fields > 10'000'000 || pages > 1'000'000) {
    std::fprintf(stderr, "usage: quillform_make_form FIELDS PAGES FILE\n");
    return 2;
  }
  const std::string bytes = quillform::bench::WriteForm(
      {static_cast<std::uint32_t>(fields), static_cast<std::uint32_t>(pages)});
  std::ofstream file(argv[3], std::ios::binary);
  file << bytes;
  file.close();
  if (!file) {
    std::fprintf(stderr, "%s cannot be written\n", argv[3]);
    return 2;
  }
  return 0;
}
