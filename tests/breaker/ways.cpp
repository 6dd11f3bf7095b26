#include "tests/breaker/ways.h"

#include <algorithm>

#include "tests/breaker/file_edit.h"

namespace quillon::test {
namespace {

// The file as it travels.

Damage PutBefore(std::size_t length) {
  return [length](std::string& file) {
    std::string lines;
    while (lines.size() < length) lines += "Received: by mail.example; line of a message\n";
    file.insert(0, lines);
    return true;
  };
}

bool NoHeader(std::string& file) { return Overwrite(file, 0, 8, "12345678"); }

bool JunkAfterEnd(std::string& file) {
  for (int i = 0; i < 200; ++i) file += "-- a line of the message around the file\n";
  return true;
}

bool LineEndsConverted(std::string& file) {
  for (std::size_t at = file.find('\n'); at != kNowhere; at = file.find('\n', at + 2)) {
    file.insert(at, "\r");
  }
  return true;
}

// So many bytes are left, of each hundred or in all.
Damage CutTo(std::size_t percent, std::size_t bytes) {
  return [=](std::string& file) {
    file.resize(file.size() * percent / 100 + bytes);
    return true;
  };
}

bool CutAtEnd(std::string& file) {
  file.resize(file.size() - 30);
  return true;
}

bool ZerosInside(std::string& file) {
  file.replace(file.size() / 3, 200, 200, '\0');
  return true;
}

bool LineLost(std::string& file) {
  const std::size_t start = file.find('\n', file.size() / 4) + 1;
  file.erase(start, file.find('\n', start) - start + 1);
  return true;
}

bool LineAdded(std::string& file) {
  file.insert(file.find('\n') + 1, "% a line that somebody added with an editor\n");
  return true;
}

// Words are overwritten, nothing moves.

Damage First(const std::string& word, const std::string& by) {
  return [=](std::string& file) { return Overwrite(file, file.find(word), word.size(), by); };
}

Damage Last(const std::string& word, const std::string& by) {
  return [=](std::string& file) { return Overwrite(file, file.rfind(word), word.size(), by); };
}

bool OneEndLost(std::string& file) {
  return Overwrite(file, file.find("endobj", file.size() / 3), 6, "");
}

bool AllEndsLost(std::string& file) {
  while (First("endobj", "")(file)) continue;
  return true;
}

// The number behind the last such word.
Damage NumberBehind(const std::string& word, const std::string& by) {
  return [=](std::string& file) {
    const std::size_t start = file.find_first_of("0123456789", file.rfind(word));
    return Overwrite(file, start, file.find_first_not_of("0123456789", start) - start, by);
  };
}

// The digits of the first direct Length of a stream.
Damage LengthBecomes(const std::string& text) {
  return [=](std::string& file) {
    std::size_t end = 0;
    for (std::size_t at = file.find("/Length"); at != kNowhere; at = file.find("/Length", end)) {
      const std::size_t start = file.find_first_not_of(" \n\r", at + 7);
      end = file.find_first_not_of("0123456789", start);
      if (end == start || file.compare(end, 2, " 0") == 0) continue;
      return text.size() <= end - start && Overwrite(file, start, end - start, text);
    }
    return false;
  };
}

bool DataDamaged(std::string& file) {
  const std::size_t stream = std::min(file.find("stream\n"), file.find("stream\r\n"));
  if (stream == kNowhere) return false;
  for (std::size_t i = stream + 40; i < stream + 60 && i < file.size(); ++i) file[i] ^= 0x55;
  return true;
}

// Cross-references and trailer. An object is the first one with all of some words.

using Words = std::vector<std::string>;
const Words kCatalog = {"/Catalog", "/Pages"};
const Words kTree = {"/Kids", "/Count", "/Pages"};
const Words kPage = {"/Page", "/Annots"};
const Words kForm = {"/Fields", "/DA"};
const Words kGroup = {"/T", "/Kids", "("};
const Words kField = {"/Widget", "/Tx", "/T", "/Rect"};
const Words kWidget = {"/Subtype", "/Widget"};

// Something else in the line of the table that an object has.
Damage TableLine(const Words& words, std::size_t column, const std::string& text) {
  return [=](std::string& file) {
    const int number = FindObject(file, words);
    const std::size_t table = file.rfind("\nxref");
    if (number == 0 || table == kNowhere) return false;
    const std::string offset = XrefLine(ObjectPlace(file, number)).substr(0, 10);
    const std::size_t line = file.find(offset, table);
    return line != kNowhere && Overwrite(file, line + column, text.size(), text);
  };
}

bool AddToTrailer(std::string& file, const std::string& entry) {
  if (file.rfind("trailer") == kNowhere) return false;
  file.insert(file.rfind("/Root"), entry);
  return true;
}

bool PreviousInACircle(std::string& file) {
  return AddToTrailer(file, "/Prev " + std::to_string(StartXref(file)) + " ");
}

bool UnknownEncryption(std::string& file) {
  return AddToTrailer(file, "/Encrypt<</Filter/Nobody/V 9>>");
}

// Objects, pages, the form.

bool FieldUnreadable(std::string& file) {
  const int field = FindObject(file, kWidget);
  return field != 0 &&
         Overwrite(file, file.find("<<", ObjectPlace(file, field)), 12, "<< @@ ]] )(");
}

// What stands in the array that is, or is named by, the entry of that key.
std::string ItemsOf(const std::string& file, const std::string& text, const std::string& key) {
  const int list = ReferenceIn(text, key);
  const std::string holder = list == 0 ? text.substr(FindKey(text, key)) : ObjectText(file, list);
  const std::size_t open = holder.find('[');
  return holder.substr(open + 1, holder.find(']', open) - open - 1);
}

std::string Replaced(std::string text, const std::string& word, const std::string& by) {
  for (std::size_t at = text.find(word); at != kNowhere; at = text.find(word, at + by.size())) {
    text.replace(at, word.size(), by);
  }
  return text;
}

// An update, in order itself, that gives an object an entry in place of the one of that key. In the
// texts @self, @page and @new name the object, the page and a new object of that text; @items is
// what the array in the entry held.
Damage Update(const Words& words, const std::string& key, const std::string& entry,
              const std::string& newObject = "") {
  return [=](std::string& file) {
    const int number = FindObject(file, words), unused = UnusedNumber(file);
    if (number == 0) return false;
    const std::string text = ObjectText(file, number);
    const auto filled = [&](std::string value) {
      value = Replaced(value, "@self", std::to_string(number) + " 0 R");
      value = Replaced(value, "@page", std::to_string(FindObject(file, kPage)) + " 0 R");
      value = Replaced(value, "@new", std::to_string(unused) + " 0 R");
      if (value.find("@items") == kNowhere) return value;
      return Replaced(value, "@items", ItemsOf(file, text, key));
    };
    std::vector<NewText> objects = {{number, WithEntry(WithoutEntry(text, key), filled(entry))}};
    if (!newObject.empty()) objects.push_back({unused, filled(newObject)});
    return AppendObjects(file, objects);
  };
}

bool UpdateCutOff(std::string& file) {
  const std::size_t before = file.size();
  if (!Update(kField, "V", "/V (half a value)")(file)) return false;
  file.resize(file.find("(half a", before) + 7);
  return true;
}

}  // namespace

const std::vector<DamageWay>& DamageWays() {
  static const std::vector<DamageWay> ways = {
      {"junk-before-header", "lines of a mail message before the file", PutBefore(300)},
      {"header-far-inside", "more of them than a header may be preceded by", PutBefore(4000)},
      {"junk-after-end", "8,000 bytes of message after the file", JunkAfterEnd},
      {"no-header", "the first eight bytes overwritten", NoHeader},
      {"line-ends-converted", "sent as text: LF became CR LF", LineEndsConverted, true},
      {"cut-in-half", "the second half lost", CutTo(50, 0)},
      {"cut-short", "the last tenth lost", CutTo(90, 0)},
      {"cut-at-end", "the last 30 bytes lost", CutAtEnd},
      {"empty", "nothing left", CutTo(0, 0)},
      {"only-header", "nine bytes left", CutTo(0, 9)},
      {"zeros-inside", "200 zero bytes in the midst", ZerosInside, true},
      {"line-lost", "one line removed", LineLost, true},
      {"startxref-elsewhere", "startxref points into the header", NumberBehind("startxref", "7")},
      {"no-startxref", "the keyword startxref misspelt", Last("startxref", "startxfer")},
      {"no-xref-keyword", "the keyword xref misspelt", Last("\nxref", "\nxfer")},
      {"no-trailer", "the keyword trailer misspelt", Last("trailer", "trialer")},
      {"offsets-moved", "a line added near the start with an editor", LineAdded},
      {"one-offset-wrong", "the offset of a widget is another",
       TableLine(kWidget, 0, "0000000042")},
      {"listed-as-free", "the page is listed as free", TableLine(kPage, 17, "f")},
      {"generation-elsewhere", "the generation of a widget is another in the table",
       TableLine(kWidget, 11, "00003")},
      {"root-elsewhere", "Root names object 0", NumberBehind("/Root", "0")},
      {"prev-circle", "Prev names the section that it stands in", PreviousInACircle},
      {"unknown-encryption", "encrypted by a handler that nobody knows", UnknownEncryption},
      {"one-endobj-lost", "one endobj blanked out", OneEndLost},
      {"all-endobj-lost", "every endobj blanked out", AllEndsLost},
      {"endstream-lost", "the first endstream blanked out", First("endstream", "")},
      {"length-too-short", "the first Length is 3", LengthBecomes("3")},
      {"length-too-long", "the first Length is 99", LengthBecomes("99")},
      {"length-missing", "the first Length misspelt", First("/Length", "/Lentgh")},
      {"length-circle", "a stream whose Length is the stream",
       Update(kPage, "Contents", "/Contents @new", "<< /Length @new >>\nstream\nq Q\nendstream")},
      {"data-damaged", "20 bytes of the first stream's data changed", DataDamaged, true},
      {"keys-twice", "the page has entries twice",
       Update(kPage, "", "/MediaBox [0 0 10 10] /Rotate 90 /Rotate 0")},
      {"field-unreadable", "the start of a widget's dictionary overwritten", FieldUnreadable},
      {"page-without-type", "the page has no Type", Update(kPage, "Type", "")},
      {"page-twice", "the tree lists the page twice", Update(kTree, "Kids", "/Kids [@page @page]")},
      {"page-tree-circle", "the tree lists itself", Update(kTree, "Kids", "/Kids [@page @self]")},
      {"page-tree-nonsense", "the tree lists null, a number, a string, nothing",
       Update(kTree, "Kids", "/Kids [@page null 7 (text) 99999 0 R]")},
      {"page-tree-missing", "the catalog's Pages leads nowhere",
       Update(kCatalog, "Pages", "/Pages 99999 0 R")},
      {"count-wrong", "the tree's Count is 77", Update(kTree, "Count", "/Count 77")},
      {"parent-circle", "the page is its own parent", Update(kPage, "Parent", "/Parent @self")},
      {"annots-twice", "annotations null, missing and listed twice",
       Update(kPage, "Annots", "/Annots [null @items @items 99999 0 R]")},
      {"annots-no-array", "the page's Annots is a string",
       Update(kPage, "Annots", "/Annots (none)")},
      {"kids-circle", "a field is its own kid", Update(kGroup, "Kids", "/Kids [@items @self]")},
      {"field-parent-circle", "a field is its own parent",
       Update(kField, "Parent", "/Parent @self")},
      {"value-no-text", "a text field's V is a dictionary",
       Update(kField, "V", "/V << /A [ /B ] >>")},
      {"rect-no-rectangle", "a widget's Rect is a string", Update(kField, "Rect", "/Rect (none)")},
      {"fields-nonsense", "Fields lists null, a number, nothing, and all twice",
       Update(kForm, "Fields", "/Fields [null 5 (x) 99999 0 R @items @items]")},
      {"word-unknown", "an entry's value is a word that is no object",
       Update(kField, "Odd", "/Odd True")},
      {"string-open", "an entry's text has a parenthesis too many",
       Update(kField, "TU", "/TU (one (two)")},
      {"value-missing", "an entry's value is missing", Update(kField, "Odd", "/Odd")},
      {"update-cut-off", "an update of a field is cut off inside it", UpdateCutOff},
      {"actions-circle", "an action is its own Next",
       Update(kField, "A", "/A @new", "<< /S /Hide /T (nobody) /Next @new>>")},
  };
  return ways;
}

}  // namespace quillon::test
