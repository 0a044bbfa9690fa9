// The object itself: its lifetime and that of the data object.
#include "component/OrxDbObj.h"

#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "component/LanguageResources.h"
#include "component/MethodFrame.h"
#include "platform/framework/Text.h"
#include "resources/StringTable.h"

using orxdb::ComponentString;
using orxdb::ModuleStateSwitch;

namespace {

/// Takes the data object out of its slot and leaves it to itself, its open database included; a
/// group of changes, which nobody could end any more, is cancelled. The object is not destroyed,
/// for another one may be in the middle of a call on it; being listed here it does not count as
/// lost memory either.
void AbandonToolDbData() {
  if (!g_pToolDbData) return;
  static auto& abandoned = *new std::vector<CToolDbData*>;
  abandoned.push_back(g_pToolDbData);
  CDaoDatabase& database = g_pToolDbData->Database();
  if (database.IsChanging()) database.CancelChanges();
  g_pToolDbData = nullptr;
}

/// Destroys the data object in the slot, and with it every use of the engine in this process.
void EndToolDbData() {
  if (std::unique_ptr<CToolDbData> data{std::exchange(g_pToolDbData, nullptr)}) {
    data.reset();
    AfxDaoTerm();
  }
}

}  // namespace

HRESULT OrxDbObj::Create(IUnknown* outer, REFIID riid, void** ppvObject) {
  return HandOut(new (std::nothrow) OrxDbObj(outer), riid, ppvObject);
}

OrxDbObj::OrxDbObj(IUnknown* outer) : DualObject(outer) {
  orxdb::UseLanguageOfUser();
  const ModuleStateSwitch active(orxdb::ComponentModuleState());
  m_strYes = ComponentString(orxdb::IDS_YES);
  m_strNo = ComponentString(orxdb::IDS_NO);
  AbandonToolDbData();
  g_pToolDbData = std::make_unique<CToolDbData>().release();
}

OrxDbObj::~OrxDbObj() {
  EndToolDbData();
}
