// Exchange files read into a tool table.
#pragma once

#include "database/ToolDbData.h"
#include "interface/ExchangeFormat.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// Adds the tools of the file by AddNewRecord of the component, except those that the table named
/// by the file already holds. Lines that are too long or have another number of fields are passed
/// over. Looking for a tool and adding it is one transaction, together with some hundred others or
/// as a part of the host's group of changes, so that imports beside one another double nothing.
/// Ends early when `data` is no longer the data object of the component. Raises CDaoException for
/// criteria that the database refuses and for a database that is locked; tools added before stay.
void ImportRecords(CToolDbData& data, IOrxDbObj& own, ExchangeReader file);

}  // namespace orxdb
