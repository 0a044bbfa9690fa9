#include "component/ErrorReport.h"

#include <array>

#include "interface/IOrxDbObj.h"
#include "platform/automation/ClassObject.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/ErrorInfo.h"
#include "platform/framework/Text.h"

namespace orxdb {

void ReportError() noexcept {
  ComPtr<ICreateErrorInfo> report;
  if (FAILED(CreateErrorInfo(report.put()))) return;
  report->SetGUID(IID_IOrxDbObj);
  LPOLESTR progId = nullptr;
  if (SUCCEEDED(ProgIDFromCLSID(CLSID_OrxDbObj, &progId))) report->SetSource(progId);
  CoTaskMemFree(progId);
  std::array<OLECHAR, 32> description{};
  report->SetDescription(
      WidenText(description.data(), "ORX DB Error", static_cast<int>(description.size())));
  if (const auto info = report.QueryInterface<IErrorInfo>()) SetErrorInfo(0, info.get());
}

}  // namespace orxdb
