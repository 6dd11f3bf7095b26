// The names that the plug-in compares against or writes: one constant per role, so that code reads
// as what it means; roles that share a spelling hold the same atom. They are 0 until
// RegisterKeyAtoms has run (once, before anything is registered with the host) and never change
// afterwards. Names outside this list are made at the moment of need with Core.AtomFromName.
#pragma once

#include "sdk/types.h"

// clang-format off
#define QUILLFORM_KEYS(X) \
  /* The interactive form and the field tree. */ \
  X(FormDict, "QuillForm") \
  X(FormRevision, "QuillForm") \
  X(Fields, "Fields") \
  X(Kids, "Kids") \
  X(Parent, "Parent") \
  X(T, "T") \
  X(FT, "FT") \
  X(Ff, "Ff") \
  X(V, "V") \
  X(DV, "DV") \
  X(DA, "DA") \
  X(DR, "DR") \
  X(Q, "Q") \
  X(Opt, "Opt") \
  X(MaxLen, "MaxLen") \
  X(TI, "TI") \
  X(OH, "OH") \
  X(AI, "AI") \
  X(NeedAppearances, "NeedAppearances") \
  X(VolatileFields, "$Vo") \
  X(WidgetsMerged, "$Wa") \
  /* Widget annotations. */ \
  X(Type, "Type") \
  X(Subtype, "Subtype") \
  X(Rect, "Rect") \
  X(F, "F") \
  X(P, "P") \
  X(Border, "Border") \
  X(BS, "BS") \
  X(W, "W") \
  X(S, "S") \
  X(DashArray, "D") \
  X(AP, "AP") \
  X(N, "N") \
  X(R, "R") \
  X(AppearanceState, "AS") \
  X(MK, "MK") \
  X(BC, "BC") \
  X(BG, "BG") \
  X(CA, "CA") \
  X(AC, "AC") \
  X(IconNormal, "I") \
  X(IX, "IX") \
  X(TP, "TP") \
  X(H, "H") \
  X(Contents, "Contents") \
  X(Dest, "Dest") \
  X(A, "A") \
  X(AA, "AA") \
  X(Rotation, "R") \
  X(AppearanceDown, "D") \
  /* Triggers. */ \
  X(TriggerUp, "U") \
  X(TriggerDown, "D") \
  X(TriggerEnter, "E") \
  X(TriggerExit, "X") \
  X(TriggerOpen, "O") \
  X(TriggerClose, "C") \
  /* Actions. */ \
  X(FileSpec, "F") \
  X(URL, "URL") \
  X(Flags, "Flags") \
  X(Next, "Next") \
  X(ActionTarget, "T") \
  X(ActionHide, "H") \
  X(ActionState, "AS") \
  /* Form data files. */ \
  X(FDF, "FDF") \
  X(ID, "ID") \
  X(Status, "Status") \
  X(SetF, "SetF") \
  X(ClrF, "ClrF") \
  X(SetFf, "SetFf") \
  X(ClrFf, "ClrFf") \
  X(FS, "FS") \
  X(DOS, "DOS") \
  X(Mac, "Mac") \
  X(Unix, "Unix") \
  /* Streams, forms and resources. */ \
  X(Length, "Length") \
  X(Filter, "Filter") \
  X(BBox, "BBox") \
  X(Matrix, "Matrix") \
  X(FormType, "FormType") \
  X(Resources, "Resources") \
  X(ProcSet, "ProcSet") \
  X(Font, "Font") \
  X(XObject, "XObject") \
  X(Encoding, "Encoding") \
  X(BaseFont, "BaseFont") \
  X(Name, "Name") \
  X(Pages, "Pages") \
  /* Field types and kinds. */ \
  X(Btn, "Btn") \
  X(Tx, "Tx") \
  X(Ch, "Ch") \
  X(Button, "Button") \
  X(CheckBox, "CheckBox") \
  X(RadioButton, "RadioButton") \
  X(Text, "Text") \
  X(ComboBox, "ComboBox") \
  X(ListBox, "ListBox") \
  /* Annotation subtype and appearance states. */ \
  X(Widget, "Widget") \
  X(On, "On") \
  X(Off, "Off") \
  X(DefaultOn, "$On") \
  /* Action types. */ \
  X(SubmitForm, "SubmitForm") \
  X(ResetForm, "ResetForm") \
  X(ImportData, "ImportData") \
  X(Hide, "Hide") \
  X(SetState, "SetState") \
  /* Highlight modes; push is P. */ \
  X(HighlightNone, "N") \
  X(HighlightInvert, "I") \
  X(HighlightOutline, "O") \
  X(HighlightToggle, "T") \
  /* Border styles. */ \
  X(BorderSolid, "S") \
  X(BorderDashed, "D") \
  X(BorderBeveled, "B") \
  X(BorderInset, "I") \
  X(BorderUnderlined, "U") \
  /* Stream filters, procedure sets and form XObjects. */ \
  X(FlateDecode, "FlateDecode") \
  X(LZWDecode, "LZWDecode") \
  X(ASCII85Decode, "ASCII85Decode") \
  X(PDF, "PDF") \
  X(Form, "Form") \
  X(FRM, "FRM") \
  X(Type1, "Type1") \
  /* The fourteen base fonts. */ \
  X(Helvetica, "Helvetica") \
  X(HelveticaBold, "Helvetica-Bold") \
  X(HelveticaOblique, "Helvetica-Oblique") \
  X(HelveticaBoldOblique, "Helvetica-BoldOblique") \
  X(TimesRoman, "Times-Roman") \
  X(TimesBold, "Times-Bold") \
  X(TimesItalic, "Times-Italic") \
  X(TimesBoldItalic, "Times-BoldItalic") \
  X(Courier, "Courier") \
  X(CourierBold, "Courier-Bold") \
  X(CourierOblique, "Courier-Oblique") \
  X(CourierBoldOblique, "Courier-BoldOblique") \
  X(Symbol, "Symbol") \
  X(ZapfDingbats, "ZapfDingbats") \
  /* Their short resource names. */ \
  X(Helv, "Helv") \
  X(HeBo, "HeBo") \
  X(HeOb, "HeOb") \
  X(HeBO, "HeBO") \
  X(TiRo, "TiRo") \
  X(TiBo, "TiBo") \
  X(TiIt, "TiIt") \
  X(TiBI, "TiBI") \
  X(Cour, "Cour") \
  X(CoBo, "CoBo") \
  X(CoOb, "CoOb") \
  X(CoBO, "CoBO") \
  X(Symb, "Symb") \
  X(ZaDb, "ZaDb") \
  /* Host vocabulary. */ \
  X(Annotation, "Annotation") \
  X(Hand, "Hand") \
  X(HostedFileSys, "HostedFileSys") \
  X(Multiple, "Multiple")
// clang-format on

namespace quillform {

namespace key {
#define QUILLFORM_DECLARE_KEY(Role, spelling) extern quillon::Atom Role;
QUILLFORM_KEYS(QUILLFORM_DECLARE_KEY)
#undef QUILLFORM_DECLARE_KEY
}  // namespace key

// Interns every name. A failure of the host reaches the caller.
void RegisterKeyAtoms();

// 0 gives F (annotation flags), 1 gives Ff (field flags), anything else no atom.
quillon::Atom FlagsKey(std::uint16_t index);

// The entries that a field inherits, as bits of a node's own-entry mask.
enum InheritableBit : std::uint32_t {
  kBitDV = 0x01,
  kBitV = 0x02,
  kBitDA = 0x04,
  kBitOH = 0x08,
  kBitDR = 0x10,
  kBitQ = 0x20,
};

// The key of one such bit; no atom for anything else.
quillon::Atom InheritableKey(std::uint32_t bit);

}  // namespace quillform
