#include "plugin/appearance/encoding_table.h"

namespace quillform {

// clang-format off
const char* const kEncodingDifferences[kEncodingDifferenceCount + 1] = {
    "24", "breve", "caron", "circumflex", "dotaccent", "hungarumlaut", "ogonek", "ring",
    "tilde",
    "39", "quotesingle",
    "96", "grave",
    "128", "bullet", "dagger", "daggerdbl", "ellipsis", "emdash", "endash", "florin",
    "fraction", "guilsinglleft", "guilsinglright", "minus", "perthousand", "quotedblbase",
    "quotedblleft", "quotedblright", "quoteleft", "quoteright", "quotesinglbase", "trademark",
    "fi", "fl", "Lslash", "OE", "Scaron", "Ydieresis", "Zcaron", "dotlessi", "lslash", "oe",
    "scaron", "zcaron",
    "164", "currency",
    "166", "brokenbar",
    "168", "dieresis", "copyright", "ordfeminine",
    "172", "logicalnot", ".notdef", "registered", "macron", "degree", "plusminus",
    "twosuperior", "threesuperior", "acute", "mu",
    "183", "periodcentered", "cedilla", "onesuperior", "ordmasculine",
    "188", "onequarter", "onehalf", "threequarters",
    "192", "Agrave", "Aacute", "Acircumflex", "Atilde", "Adieresis", "Aring", "AE", "Ccedilla",
    "Egrave", "Eacute", "Ecircumflex", "Edieresis", "Igrave", "Iacute", "Icircumflex",
    "Idieresis", "Eth", "Ntilde", "Ograve", "Oacute", "Ocircumflex", "Otilde", "Odieresis",
    "multiply", "Oslash", "Ugrave", "Uacute", "Ucircumflex", "Udieresis", "Yacute", "Thorn",
    "germandbls", "agrave", "aacute", "acircumflex", "atilde", "adieresis", "aring", "ae",
    "ccedilla", "egrave", "eacute", "ecircumflex", "edieresis", "igrave", "iacute",
    "icircumflex", "idieresis", "eth", "ntilde", "ograve", "oacute", "ocircumflex", "otilde",
    "odieresis", "divide", "oslash", "ugrave", "uacute", "ucircumflex", "udieresis", "yacute",
    "thorn", "ydieresis",
    "",
};
// clang-format on

}  // namespace quillform
