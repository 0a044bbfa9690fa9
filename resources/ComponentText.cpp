#include "resources/ComponentText.h"

#include <array>

#include "platform/framework/MessageBox.h"
#include "resources/StringTable.h"

namespace orxdb {

CModuleState& ComponentModuleState() {
  static CModuleState state(&kEnglishTexts, [] {
    std::string title;
    LoadString(&kEnglishTexts, IDS_APPLICATION_TITLE, title);
    return title;
  }());
  return state;
}

bool LoadComponentString(std::string& text, unsigned id) {
  return LoadString(ComponentModuleState().CurrentResource(), id, text);
}

int ShowComponentMessage(unsigned id, unsigned style) {
  std::string text;
  LoadComponentString(text, id);
  return ShowMessageBox(text, ComponentModuleState().Title(), style);
}

void DropMessage(const CException& exception) {
  std::array<char, 256> message{};
  if (exception.GetErrorMessage(message.data(), message.size())) return;
  std::string unknown;
  LoadComponentString(unknown, IDS_UNKNOWN_ERROR);
}

}  // namespace orxdb
