// What the sweep does to a form, one piece of work at a time, and what must hold after a failure.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "quillon/document/plugin_failure.h"
#include "sdk/types.h"
#include "tests/plugin/exchange/url_files.h"

namespace quillon::test {

// A form with a field of every kind in a view; the plug-in is attached and initialised.
struct FormWorld {
  DocHandle doc = nullptr;
  DocView view = nullptr;
  ObjectDoc fdf = nullptr;       // values for every field
  DocHandle otherDoc = nullptr;  // a form whose pages are inserted
  std::string saved;             // of the scenario that saves
  quillform::UrlFiles web;
  DocView webView = nullptr;  // a form in a browser, of the scenarios that submit
};

enum class Moment {
  kStart,    // the work is the start of the plug-in, before there is a document
  kForm,     // there is a form
  kWebForm,  // and another one that came from the web
  kEnd,      // the work is the end of the viewer; the form is closed
};

struct Scenario {
  const char* name;
  Moment moment;
  void (*work)(FormWorld& world);
};

const std::vector<Scenario>& Scenarios();

void StartPlugIn();
void OpenWorld(FormWorld& world, Moment moment);
void CloseWorld(FormWorld& world);

// Values by field name, and the number of pages by the name "(pages)".
using Snapshot = std::map<std::string, std::string>;
Snapshot TakeSnapshot(DocHandle doc);

// What is wrong with the document: an appearance whose brackets do not match, or a save that cannot
// be read back with the same values. Empty when nothing is.
std::string FaultOf(FormWorld& world);

}  // namespace quillon::test
