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
    0x2d8f1c06, 0x5b7e, 0x4c39, {0x91, 0x4a, 0xe0, 0x63, 0x7f, 0x18, 0xb5, 0xd2}};

namespace orxdb {

/// What a file that is to be a tool database turns out to be.
enum class DatabaseFileState : LONG {
  Absent,
  Folder,
  Unreadable,   ///< it may not be read
  Empty,        ///< it holds no byte
  NotDatabase,  ///< it is a file of another kind
  InUse,        ///< another program keeps it to itself
  SharedLog,    ///< it has a log, and is in a network folder
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

  /// Makes the tool database that a shop starts from, with a log unless it is in a network folder.
  /// There must not be a file of that name; what is left of a failed attempt is the caller's to
  /// remove. Until the end nothing is waited for to
  /// reach the disk.
  virtual HRESULT STDMETHODCALLTYPE CreateStarter(BSTR bstrNewFile, BSTR* pReason) = 0;
  /// Copies a database as it is at one moment, whoever uses it meanwhile, to a file that nobody
  /// uses. Waits up to five seconds for others.
  virtual HRESULT STDMETHODCALLTYPE Copy(BSTR bstrFile, BSTR bstrNewFile, BSTR* pReason) = 0;
  /// Reads a database through. The reason is the first thing that is not in order.
  virtual HRESULT STDMETHODCALLTYPE Check(BSTR bstrFile, BSTR* pReason) = 0;
  /// Gives a finished new file the name of a database that nobody has open, or of none. With a name
  /// in `bstrKept`, at which there must be no file, the database that was there is kept under it;
  /// with a null or empty one it is lost. Fails with the old database in place when a program has
  /// it open, and, unless `bCertain`, when nobody can tell: of a database without a log in a folder
  /// of another machine, or that belongs to another person. A program that has a connection of its
  /// own to the file, beside this component, is to close it before.
  virtual HRESULT STDMETHODCALLTYPE Replace(BSTR bstrFile, BSTR bstrNewFile, BSTR bstrKept,
                                            VARIANT_BOOL bCertain, BSTR* pReason) = 0;
  /// Whether a database has a write-ahead log, or a new one of that name would have one, and what
  /// serves its folder if other machines may use it too, such as "nfs4"; else that is empty.
  virtual HRESULT STDMETHODCALLTYPE GetJournal(BSTR bstrFile, VARIANT_BOOL* pbLog, BSTR* pNetwork,
                                               BSTR* pReason) = 0;
  /// Gives a database that nobody else uses just now a write-ahead log, by which nobody waits for
  /// readers, or none. In a network folder there can be no log.
  virtual HRESULT STDMETHODCALLTYPE SetJournal(BSTR bstrFile, VARIANT_BOOL bLog, BSTR* pReason) = 0;
  /// Looks at the file without waiting for others.
  virtual HRESULT STDMETHODCALLTYPE GetState(BSTR bstrFile, orxdb::DatabaseFileState* pState) = 0;
};

#pragma GCC diagnostic pop
