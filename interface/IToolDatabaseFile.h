// Database files as a whole, which hosts create, copy and ask about without opening them as the
// tool database. The component's class object answers this interface:
//
//   ComPtr<IToolDatabaseFile> files;
//   CoGetClassObject(CLSID_OrxDbObj, CLSCTX_INPROC_SERVER, nullptr, IToolDatabaseFile::iid,
//                    files.putVoid());
//   Bstr reason;
//   if (FAILED(files->CreateStarter(path.get(), reason.put()))) Show(reason);
#pragma once

#include "platform/automation/Unknown.h"

inline constexpr IID IID_IToolDatabaseFile = {
    0xa32d8b9b, 0x9683, 0x41f4, {0xbd, 0x59, 0x57, 0x26, 0xd7, 0x96, 0x71, 0x01}};

namespace orxdb {

/// What a file that is to be a tool database turns out to be.
enum class DatabaseFileState : LONG {
  Absent,
  Folder,
  Unreadable,   ///< it may not be read
  Empty,        ///< it holds no byte
  NotDatabase,  ///< it is a file of another kind
  InUse,        ///< another program keeps it to itself
  Database,     ///< nothing of the above; it may be damaged, or the database of something else
};

}  // namespace orxdb

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The files are named by paths with either separator. They have nothing to do with the database
/// that is open. E_INVALIDARG without a path or a place for the answer. Methods that fail say why:
/// the reason, a part of a sentence without a full stop, belongs to the caller; it is null when
/// there is nothing to say, as after success.
struct IToolDatabaseFile : public IUnknown {
  static constexpr const IID& iid = IID_IToolDatabaseFile;

  /// Makes the tool database that a shop starts from. There must not be a file of that name; what
  /// is left of a failed attempt is the caller's to remove. Until the end nothing is waited for to
  /// reach the disk.
  virtual HRESULT STDMETHODCALLTYPE CreateStarter(BSTR bstrNewFile, BSTR* pReason) = 0;
  /// Copies a database as it is at one moment, whoever uses it meanwhile. Waits up to five seconds
  /// for others.
  virtual HRESULT STDMETHODCALLTYPE Copy(BSTR bstrFile, BSTR bstrNewFile, BSTR* pReason) = 0;
  /// Removes what a database of that name may have left beside its file, such as its log, which
  /// would be taken for the log of a file that takes its place.
  virtual HRESULT STDMETHODCALLTYPE RemoveRemains(BSTR bstrFile, BSTR* pReason) = 0;
  /// Looks at the file without waiting for others.
  virtual HRESULT STDMETHODCALLTYPE GetState(BSTR bstrFile, orxdb::DatabaseFileState* pState) = 0;
};

#pragma GCC diagnostic pop
