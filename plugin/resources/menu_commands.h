// The plug-in's items in the host's menus.
#pragma once

#include <cstdint>

#include "plugin/host/host.h"

namespace quillform {

inline constexpr std::int16_t kNoLabel = -1;

// The routines are what the host may call (MakeHostCallback); each may be null, and gets
// `clientData`.
struct MenuCommand {
  quillon::MenuHandle menu;
  const char* name;    // the same in every language
  std::int16_t label;  // a string of the module's; a negative one stands for an empty label
  quillon::ExecuteProc execute;
  quillon::ComputeProc computeEnabled;
  quillon::ComputeProc computeMarked;
  quillon::MenuHandle submenu;
  std::uint16_t position;
  void* clientData;
};

// Makes the item and puts it into the menu at the position, as quillon::kMenuEnd at its end. A host
// without the menu gets no item.
void AddMenuCommand(const MenuCommand& command);

// The three routines, wrapped for the host. What an execute routine raises reaches the host, which
// tells the user; an item whose state cannot be computed is neither enabled nor marked.
template <auto Routine>
quillon::ExecuteProc MakeExecuteProc() {
  return reinterpret_cast<quillon::ExecuteProc>(MakeHostCallback<Routine>());
}
template <auto Routine>
quillon::ComputeProc MakeComputeProc() {
  return reinterpret_cast<quillon::ComputeProc>(MakeHostCallback<Routine, OnFailure::kDrop>());
}

// Adds an item that does something and is enabled when `IsEnabled` says so; it is never marked.
template <auto Execute, auto IsEnabled>
void AddCommandItem(quillon::MenuHandle menu, const char* name, std::int16_t label,
                    std::uint16_t position = quillon::kMenuEnd) {
  AddMenuCommand({.menu = menu,
                  .name = name,
                  .label = label,
                  .execute = MakeExecuteProc<Execute>(),
                  .computeEnabled = MakeComputeProc<IsEnabled>(),
                  .computeMarked = nullptr,
                  .submenu = nullptr,
                  .position = position,
                  .clientData = nullptr});
}

}  // namespace quillform
