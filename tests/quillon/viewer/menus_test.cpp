#include "quillon/viewer/menus.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "quillon/viewer/operations.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

constexpr ExtensionId kExtension = 12;

struct MenusTest : testing::Test {
  MenuItemHandle Add(const char* menu, const char* name, std::uint16_t position) {
    const MenuItemHandle item =
        viewer::NewMenuItem("&Label", name, nullptr, 0, 0, 0, nullptr, kExtension);
    viewer::AddMenuItem(viewer::AcquireMenuByName(menu), item, position);
    viewer::ReleaseMenuItem(item);
    return item;
  }
  std::vector<std::string> Names(const char* menu) {
    std::vector<std::string> names;
    for (const MenuItemView& item : MenuItems(viewer::AcquireMenuByName(menu))) {
      names.push_back(item.name);
    }
    return names;
  }
  MenuItemView View(const char* menu, const std::string& name) {
    for (const MenuItemView& item : MenuItems(viewer::AcquireMenuByName(menu))) {
      if (item.name == name) return item;
    }
    ADD_FAILURE() << name << " is not in " << menu;
    return {};
  }

  test::TestHost host;
};

TEST_F(MenusTest, ItemsGoToTheirPlaceBesideAnAnchor) {
  const auto after = [](const char* name) {
    return static_cast<std::uint16_t>(viewer::MenuItemIndex(viewer::MenuItemByName(name)) + 1);
  };
  Add("Tools", "Test:Tool", after("Thread"));
  EXPECT_EQ(Names("Tools"), (std::vector<std::string>{"Hand", "Thread", "Test:Tool"}));
  const std::uint16_t place = after("endOleEditGroup");
  Add("Edit", "Test:Second", place);
  Add("Edit", "Test:First", place);
  const std::vector<std::string> edit = Names("Edit");
  const auto first = std::find(edit.begin(), edit.end(), "Test:First");
  ASSERT_NE(first, edit.end());
  EXPECT_EQ(first[-1], "endOleEditGroup");
  EXPECT_EQ(first[1], "Test:Second");
  EXPECT_EQ(viewer::MenuItemIndex(viewer::MenuItemByName("thread")), kMenuEnd)
      << "names compare exactly; beside none is the end";
}

void Count(void* clientData) { ++*static_cast<int*>(clientData); }
Boolean Even(void* clientData) { return *static_cast<int*>(clientData) % 2 == 0; }
TEST_F(MenusTest, RoutinesDecideWhatCanBeChosen) {
  int chosen = 0;
  const MenuItemHandle item = Add("Tools", "Test:Count", kMenuEnd);
  EXPECT_FALSE(View("Tools", "Test:Count").enabled) << "nothing is behind it yet";
  EXPECT_EQ(RaisedBy([&] { ExecuteMenuItem(item); }), kErrorNotOffered);
  viewer::SetExecuteProc(item, Count, &chosen);
  EXPECT_TRUE(View("Tools", "Test:Count").enabled);
  viewer::SetComputeEnabledProc(item, Even, &chosen);
  viewer::SetComputeMarkedProc(item, Even, &chosen);
  ExecuteMenuItem(item);
  EXPECT_EQ(chosen, 1);
  EXPECT_FALSE(View("Tools", "Test:Count").marked);
  EXPECT_EQ(RaisedBy([&] { ExecuteMenuItem(item); }), kErrorGeneral);
  EXPECT_EQ(chosen, 1);
}

}  // namespace
}  // namespace quillon
