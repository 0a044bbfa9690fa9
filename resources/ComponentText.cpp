#include "resources/ComponentText.h"

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

std::string ComponentString(unsigned id) {
  std::string text;
  LoadString(ComponentModuleState().CurrentResource(), id, text);
  return text;
}

int ShowComponentMessage(unsigned id, unsigned style) {
  return ShowMessageBox(ComponentString(id), ComponentModuleState().Title(), style);
}

}  // namespace orxdb
