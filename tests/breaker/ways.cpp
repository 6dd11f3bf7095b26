#include "tests/breaker/ways.h"

#include <algorithm>
#include <cctype>

#include "tests/breaker/file_edit.h"

namespace quillon::test {
namespace {

// The file as it travels.

bool PutBefore(std::string* file, std::size_t length) {
  std::string lines;
  while (lines.size() < length) lines += "Received: by mail.example; line of a message\n";
  file->insert(0, lines);
  return true;
}

bool JunkBeforeHeader(std::string* file) { return PutBefore(file, 300); }
bool HeaderFarInside(std::string* file) { return PutBefore(file, 4000); }

bool JunkAfterEnd(std::string* file) {
  for (int i = 0; i < 200; ++i) *file += "-- a line of the message around the file\n";
  return true;
}

bool NoHeader(std::string* file) {
  Overwrite(file, 0, 8, "12345678");
  return true;
}

bool LineEndsConverted(std::string* file) {
  std::string converted;
  for (const char c : *file) {
    if (c == '\n') converted.push_back('\r');
    converted.push_back(c);
  }
  *file = converted;
  return true;
}

bool CutInHalf(std::string* file) {
  file->resize(file->size() / 2);
  return true;
}

bool CutShort(std::string* file) {
  file->resize(file->size() * 9 / 10);
  return true;
}

bool CutAtTheEnd(std::string* file) {
  file->resize(file->size() - 30);
  return true;
}

bool EmptyFile(std::string* file) {
  file->clear();
  return true;
}

bool OnlyHeader(std::string* file) {
  file->resize(9);
  return true;
}

bool ZerosInside(std::string* file) {
  const std::size_t place = file->size() / 3;
  const std::size_t length = std::min<std::size_t>(200, file->size() - place);
  file->replace(place, length, length, '\0');
  return true;
}

bool LineLost(std::string* file) {
  const std::size_t start = file->find('\n', file->size() / 4) + 1;
  file->erase(start, file->find('\n', start) - start + 1);
  return true;
}

// Cross-references and trailer.

bool ReplaceLast(std::string* file, const std::string& word, const std::string& by) {
  const std::size_t place = file->rfind(word);
  if (place == kNowhere) return false;
  Overwrite(file, place, word.size(), by);
  return true;
}

bool StartXrefElsewhere(std::string* file) {
  const std::size_t place = file->rfind("startxref");
  const std::size_t digits = file->find_first_of("0123456789", place);
  const std::size_t end = file->find_first_not_of("0123456789", digits);
  Overwrite(file, digits, end - digits, "7");
  return true;
}

bool NoStartXref(std::string* file) { return ReplaceLast(file, "startxref", "startxfer"); }
bool NoXrefKeyword(std::string* file) { return ReplaceLast(file, "\nxref", "\nxfer"); }
bool NoTrailer(std::string* file) { return ReplaceLast(file, "trailer", "trialer"); }

bool AllOffsetsMoved(std::string* file) {
  file->insert(file->find('\n') + 1, "% a line that somebody added with an editor\n");
  return true;
}

// The line of the table that an object has.
std::size_t TableLineOf(const std::string& file, int number) {
  const std::size_t table = file.rfind("\nxref");
  if (table == kNowhere) return kNowhere;
  std::string offset = std::to_string(ObjectPlace(file, number));
  offset.insert(0, 10 - std::min<std::size_t>(10, offset.size()), '0');
  return file.find(offset, table);
}

bool OneOffsetWrong(std::string* file) {
  const int field = FindObject(*file, {"/Subtype", "/Widget"});
  const std::size_t line = field == 0 ? kNowhere : TableLineOf(*file, field);
  if (line == kNowhere) return false;
  file->replace(line, 10, "0000000042");
  return true;
}

bool OneObjectListedAsFree(std::string* file) {
  const int page = FindObject(*file, {"/Page", "/Annots"});
  const std::size_t line = page == 0 ? kNowhere : TableLineOf(*file, page);
  if (line == kNowhere) return false;
  (*file)[line + 17] = 'f';
  return true;
}

bool RootElsewhere(std::string* file) {
  const std::size_t place = file->rfind("/Root");
  if (place == kNowhere) return false;
  const std::size_t digits = file->find_first_of("0123456789", place);
  const std::size_t end = file->find_first_not_of("0123456789", digits);
  Overwrite(file, digits, end - digits, std::string(end - digits, '0'));
  return true;
}

bool UnknownEncryption(std::string* file) {
  const std::size_t place = file->rfind("/Root");
  if (place == kNowhere || file->rfind("trailer") == kNowhere) return false;
  file->insert(place, "/Encrypt<</Filter/Nobody/V 9>>");
  return true;
}

bool PreviousInACircle(std::string* file) {
  const std::size_t place = file->rfind("startxref");
  if (file->rfind("trailer") == kNowhere) return false;
  const std::string start = file->substr(place + 10, file->find('\n', place + 10) - place - 10);
  const std::size_t root = file->rfind("/Root");
  file->insert(root, "/Prev " + start + " ");
  return true;
}

// Objects and streams.

bool OneEndLost(std::string* file) {
  const std::size_t place = file->find("endobj", file->size() / 3);
  if (place == kNowhere) return false;
  Overwrite(file, place, 6, "");
  return true;
}

bool AllEndsLost(std::string* file) {
  for (std::size_t at = file->find("endobj"); at != kNowhere; at = file->find("endobj", at)) {
    Overwrite(file, at, 6, "");
  }
  return true;
}

bool EndOfStreamLost(std::string* file) {
  const std::size_t place = file->find("endstream");
  if (place == kNowhere) return false;
  Overwrite(file, place, 9, "");
  return true;
}

// Replaces the digits of the first direct Length of a stream.
bool LengthBecomes(std::string* file, const std::string& text) {
  for (std::size_t at = file->find("/Length"); at != kNowhere; at = file->find("/Length", at + 1)) {
    const std::size_t digits = file->find_first_not_of(" \n\r", at + 7);
    const std::size_t end = file->find_first_not_of("0123456789", digits);
    if (end == digits || file->compare(end, 2, " 0") == 0) continue;
    if (text.size() > end - digits) return false;
    Overwrite(file, digits, end - digits, text);
    return true;
  }
  return false;
}

bool LengthTooShort(std::string* file) { return LengthBecomes(file, "3"); }
bool LengthTooLong(std::string* file) { return LengthBecomes(file, "99"); }

bool LengthMissing(std::string* file) {
  const std::size_t place = file->find("/Length");
  if (place == kNowhere) return false;
  Overwrite(file, place, 7, "/Lentgh");
  return true;
}

bool DataDamaged(std::string* file) {
  std::size_t stream = file->find("stream\n");
  const std::size_t withCr = file->find("stream\r\n");
  stream = std::min(stream, withCr);
  if (stream == kNowhere) return false;
  for (std::size_t i = stream + 40; i < stream + 60 && i < file->size(); ++i) (*file)[i] ^= 0x55;
  return true;
}

int PageNumber(const std::string& file) { return FindObject(file, {"/Page", "/Annots"}); }

bool LengthInACircle(std::string* file) {
  const int page = PageNumber(*file);
  const int number = UnusedNumber(*file);
  const std::string self = std::to_string(number) + " 0 R";
  if (page == 0) return false;
  const std::string text =
      WithEntry(WithoutEntry(ObjectText(*file, page), "Contents"), "/Contents " + self);
  return AppendObjects(
      file, {{page, text}, {number, "<< /Length " + self + " >>\nstream\nq Q\nendstream"}});
}

// Changes an object by an update that is in order itself.
bool Change(std::string* file, int number, const std::string& entry, const std::string& key) {
  if (number == 0) return false;
  std::string text = ObjectText(*file, number);
  if (!key.empty()) text = WithoutEntry(text, key);
  return AppendObjects(file, {{number, entry.empty() ? text : WithEntry(text, entry)}});
}

bool KeysTwice(std::string* file) {
  return Change(file, PageNumber(*file), "/MediaBox [0 0 10 10] /Rotate 90 /Rotate 0", "");
}

bool FieldUnreadable(std::string* file) {
  const int field = FindObject(*file, {"/Subtype", "/Widget"});
  const std::size_t place = field == 0 ? kNowhere : ObjectPlace(*file, field);
  if (place == kNowhere) return false;
  const std::size_t start = file->find("<<", place);
  Overwrite(file, start, 12, "<< @@ ]] )(");
  return true;
}

// Pages and annotations.

int TreeRoot(const std::string& file) { return FindObject(file, {"/Kids", "/Count", "/Pages"}); }

bool PageWithoutType(std::string* file) { return Change(file, PageNumber(*file), "", "Type"); }

bool KidsBecome(std::string* file, const std::string& kids) {
  return Change(file, TreeRoot(*file), "/Kids [" + kids + "]", "Kids");
}

std::string Reference(int number) { return std::to_string(number) + " 0 R "; }

bool PageTwice(std::string* file) {
  const std::string page = Reference(PageNumber(*file));
  return KidsBecome(file, page + page);
}

bool PageTreeInACircle(std::string* file) {
  return KidsBecome(file, Reference(PageNumber(*file)) + Reference(TreeRoot(*file)));
}

bool NoPagesInTree(std::string* file) {
  return KidsBecome(file, Reference(PageNumber(*file)) + "null 7 (text) 99999 0 R");
}

bool CountWrong(std::string* file) { return Change(file, TreeRoot(*file), "/Count 77", "Count"); }

bool ParentIsThePage(std::string* file) {
  const int page = PageNumber(*file);
  return Change(file, page, "/Parent " + Reference(page), "Parent");
}

bool PageTreeMissing(std::string* file) {
  return Change(file, FindObject(*file, {"/Catalog", "/Pages"}), "/Pages 99999 0 R", "Pages");
}

std::string AnnotsOf(const std::string& file, int page) {
  const std::string text = ObjectText(file, page);
  const int list = ReferenceIn(text, "Annots");
  const std::string holder = list == 0 ? text.substr(text.find("/Annots")) : ObjectText(file, list);
  const std::size_t open = holder.find('[');
  return holder.substr(open + 1, holder.find(']', open) - open - 1);
}

bool AnnotsTwiceAndNull(std::string* file) {
  const int page = PageNumber(*file);
  if (page == 0) return false;
  const std::string annots = AnnotsOf(*file, page);
  return Change(file, page, "/Annots [null " + annots + " " + annots + " 99999 0 R]", "Annots");
}

bool AnnotsNoArray(std::string* file) {
  return Change(file, PageNumber(*file), "/Annots (none)", "Annots");
}

// The form.

int FirstField(const std::string& file) {
  return FindObject(file, {"/Widget", "/Tx", "/T", "/Rect"});
}

bool KidIsTheFieldItself(std::string* file) {
  const int group = FindObject(*file, {"/T", "/Kids", "("});
  if (group == 0) return false;
  const std::string text = ObjectText(*file, group);
  const std::size_t open = text.find('[', text.find("/Kids"));
  const std::string kids = text.substr(open + 1, text.find(']', open) - open - 1);
  return Change(file, group, "/Kids [" + kids + " " + Reference(group) + "]", "Kids");
}

bool FieldParentInACircle(std::string* file) {
  const int field = FirstField(*file);
  return Change(file, field, "/Parent " + Reference(field), "Parent");
}

bool ValueNoText(std::string* file) {
  return Change(file, FirstField(*file), "/V << /A [ /B ] >>", "V");
}

bool RectNoRectangle(std::string* file) {
  return Change(file, FirstField(*file), "/Rect (none)", "Rect");
}

bool FieldsNonsense(std::string* file) {
  const int form = FindObject(*file, {"/Fields", "/DA"});
  if (form == 0) return false;
  const std::string text = ObjectText(*file, form);
  const std::size_t open = text.find('[', text.find("/Fields"));
  const std::string fields = text.substr(open + 1, text.find(']', open) - open - 1);
  return Change(file, form, "/Fields [null 5 (x) 99999 0 R " + fields + " " + fields + "]",
                "Fields");
}

bool ActionsInACircle(std::string* file) {
  const int field = FirstField(*file);
  const int action = UnusedNumber(*file);
  if (field == 0) return false;
  const std::string text = WithEntry(ObjectText(*file, field), "/A " + Reference(action));
  return AppendObjects(
      file, {{field, text}, {action, "<< /S /Hide /T (nobody) /Next " + Reference(action) + ">>"}});
}

}  // namespace

const std::vector<DamageWay>& DamageWays() {
  static const std::vector<DamageWay> ways = {
      {"junk-before-header", "lines of a mail message before the file", JunkBeforeHeader},
      {"header-far-inside", "more of them than a header may be preceded by", HeaderFarInside},
      {"junk-after-end", "8,000 bytes of message after the file", JunkAfterEnd},
      {"no-header", "the first eight bytes overwritten", NoHeader},
      {"line-ends-converted", "sent as text: LF became CR LF", LineEndsConverted, true},
      {"cut-in-half", "the second half lost", CutInHalf},
      {"cut-short", "the last tenth lost", CutShort},
      {"cut-at-end", "the last 30 bytes lost", CutAtTheEnd},
      {"empty", "nothing left", EmptyFile},
      {"only-header", "nine bytes left", OnlyHeader},
      {"zeros-inside", "200 zero bytes in the midst", ZerosInside, true},
      {"line-lost", "one line removed", LineLost, true},
      {"startxref-elsewhere", "startxref points into the header", StartXrefElsewhere},
      {"no-startxref", "the keyword startxref misspelt", NoStartXref},
      {"no-xref-keyword", "the keyword xref misspelt", NoXrefKeyword},
      {"no-trailer", "the keyword trailer misspelt", NoTrailer},
      {"offsets-moved", "a line added near the start with an editor", AllOffsetsMoved},
      {"one-offset-wrong", "the offset of a widget is another", OneOffsetWrong},
      {"listed-as-free", "the page is listed as free", OneObjectListedAsFree},
      {"root-elsewhere", "Root names object 0", RootElsewhere},
      {"prev-circle", "Prev names the section that it stands in", PreviousInACircle},
      {"unknown-encryption", "encrypted by a handler that nobody knows", UnknownEncryption},
      {"one-endobj-lost", "one endobj blanked out", OneEndLost},
      {"all-endobj-lost", "every endobj blanked out", AllEndsLost},
      {"endstream-lost", "the first endstream blanked out", EndOfStreamLost},
      {"length-too-short", "the first Length is 3", LengthTooShort},
      {"length-too-long", "the first Length is 99", LengthTooLong},
      {"length-missing", "the first Length misspelt", LengthMissing},
      {"length-circle", "a stream whose Length is the stream", LengthInACircle},
      {"data-damaged", "20 bytes of the first stream's data changed", DataDamaged, true},
      {"keys-twice", "the page has entries twice", KeysTwice},
      {"field-unreadable", "the start of a widget's dictionary overwritten", FieldUnreadable},
      {"page-without-type", "the page has no Type", PageWithoutType},
      {"page-twice", "the tree lists the page twice", PageTwice},
      {"page-tree-circle", "the tree lists itself", PageTreeInACircle},
      {"page-tree-nonsense", "the tree lists null, a number, a string, nothing", NoPagesInTree},
      {"page-tree-missing", "the catalog's Pages leads nowhere", PageTreeMissing},
      {"count-wrong", "the tree's Count is 77", CountWrong},
      {"parent-circle", "the page is its own parent", ParentIsThePage},
      {"annots-twice", "annotations null, missing and listed twice", AnnotsTwiceAndNull},
      {"annots-no-array", "the page's Annots is a string", AnnotsNoArray},
      {"kids-circle", "a field is its own kid", KidIsTheFieldItself},
      {"field-parent-circle", "a field is its own parent", FieldParentInACircle},
      {"value-no-text", "a text field's V is a dictionary", ValueNoText},
      {"rect-no-rectangle", "a widget's Rect is a string", RectNoRectangle},
      {"fields-nonsense", "Fields lists null, a number, nothing, and all twice", FieldsNonsense},
      {"actions-circle", "an action is its own Next", ActionsInACircle},
  };
  return ways;
}

}  // namespace quillon::test
