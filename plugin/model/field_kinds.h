// The registry of per-kind behaviour. Each kind of field has one record of routines; what a kind
// leaves empty has the default that the caller states. Lower rooms reach the appearance builders
// and, later, the interactive side through it.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

struct WidgetLook;

struct FieldTypeHandler {
  std::uint32_t size;
  std::uint16_t tracksPress;
  std::uint16_t keepsFocus;
  Atom (*GetKind)();
  void (*GetKindLabel)(const FieldTypeHandler*, char* buffer, std::uint32_t size);
  bool (*Draw)(const FieldTypeHandler*, AnnotHandle, PageView, bool hasFocus);
  void (*KeyDown)(const FieldTypeHandler*, AnnotHandle, std::uint16_t key, std::uint32_t modifiers);
  WidgetLook* (*ReadProperties)(const FieldTypeHandler*, AnnotHandle);
  void (*ApplyProperties)(const FieldTypeHandler*, AnnotHandle, WidgetLook*);
  void (*FreeProperties)(const FieldTypeHandler*, WidgetLook*);
  void (*RebuildAppearance)(const FieldTypeHandler*, AnnotHandle, Atom state, ObjectHandle value,
                            bool stale);
  void (*FocusChanged)(const FieldTypeHandler*, AnnotHandle, PageView, bool gained);
  void (*Click)(const FieldTypeHandler*, AnnotHandle, PageView, std::int16_t x, std::int16_t y,
                std::uint32_t modifiers, std::uint16_t clickCount);
  void (*ViewChangedA)(const FieldTypeHandler*, AnnotHandle, PageView);
  void (*ViewChangedB)(const FieldTypeHandler*, AnnotHandle, PageView);
  bool (*AdjustCursor)(const FieldTypeHandler*, AnnotHandle, PageView, std::int16_t x,
                       std::int16_t y);
  void (*TakeFocus)(const FieldTypeHandler*, AnnotHandle, PageView);
  bool (*HasFocus)(const FieldTypeHandler*, AnnotHandle, PageView);
};

// Ignored when the record is null or has no GetKindLabel. A record of the same kind is replaced.
void RegisterFieldTypeHandler(const FieldTypeHandler* handler);
// Null when no record serves the kind.
const FieldTypeHandler* FindFieldTypeHandler(Atom kind);
void ForEachFieldTypeHandler(void (*routine)(const FieldTypeHandler*, void*), void* clientData);
void ClearFieldTypeHandlers();

}  // namespace quillform
