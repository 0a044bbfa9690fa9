#include "component/ErrorReport.h"

#include <array>
#include <string_view>

#include "platform/automation/ClassObject.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/ErrorInfo.h"
#include "platform/framework/Text.h"

namespace orxdb {

void ReportError(const DescribedClass& type) noexcept {
  ComPtr<ICreateErrorInfo> report;
  if (FAILED(CreateErrorInfo(report.put()))) return;
  report->SetGUID(type.interfaceType.guid);
  // A host may use the component by its path, unregistered; the source is the same then.
  std::array<OLECHAR, 32> ownProgId{};
  std::u16string_view(type.progId).copy(ownProgId.data(), ownProgId.size() - 1);
  LPOLESTR progId = nullptr;
  const bool registered = SUCCEEDED(ProgIDFromCLSID(type.type.guid, &progId));
  report->SetSource(registered ? progId : ownProgId.data());
  CoTaskMemFree(progId);
  std::array<OLECHAR, 32> description{};
  report->SetDescription(
      WidenText(description.data(), "ORX DB Error", static_cast<int>(description.size())));
  if (const auto info = report.QueryInterface<IErrorInfo>()) SetErrorInfo(0, info.get());
}

}  // namespace orxdb
