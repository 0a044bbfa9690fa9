// What hosts may want of the tool database beyond its 41 methods: a second class, which works on
// the database that the process has open and neither opens, closes nor keeps it:
//
//   ComPtr<IOrxDbLibrary> library;
//   CoCreateInstance(CLSID_OrxDbLibrary, nullptr, CLSCTX_INPROC_SERVER, IOrxDbLibrary::iid,
//                    library.putVoid());
//   DOUBLE seen = 0;
//   library->ChangeNumber(&seen);
//
// Conventions of all methods:
// - The result is S_OK or E_FAIL, and E_FAIL without an open database, for a missing argument and
//   for a table that the catalogue does not name. A failing method sets the calling thread's error
//   information as those of IOrxDbObj do, with the interface and the ProgID of this class, and
//   leaves the out-parameters as they were.
// - What comes out belongs to the caller, who frees it with SysFreeString and VariantClear. What
//   was in an out-parameter is overwritten, not released.
// - Names of tables and fields are those of IOrxDbObj.
#pragma once

#include "platform/automation/Unknown.h"

/// Class identifier of `OrxDbLibrary`.
inline constexpr CLSID CLSID_OrxDbLibrary = {
    0x5f7a275d, 0x9872, 0x487f, {0x96, 0x02, 0xe3, 0xe8, 0x4e, 0xd6, 0x2e, 0xd4}};
/// Interface identifier of `IOrxDbLibrary`.
inline constexpr IID IID_IOrxDbLibrary = {
    0xac624778, 0x841d, 0x4828, {0x85, 0xc6, 0xb8, 0x51, 0x23, 0xcc, 0x4a, 0x1a}};

inline constexpr const OLECHAR* kOrxDbLibraryProgId = OLESTR("ORXDB.OrxDbLibrary.1");
inline constexpr const OLECHAR* kOrxDbLibraryVersionIndependentProgId =
    OLESTR("ORXDB.OrxDbLibrary");

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The library of tools that is open. Dispatch identifiers are in the order below, from 1.
struct IOrxDbLibrary : public IDispatch {
  static constexpr const IID& iid = IID_IOrxDbLibrary;

  /// A number that differs after every commit to the database, by this program or another. Equal
  /// numbers tell that nothing was changed in between; it says nothing about another time that the
  /// database is open. Asking costs less than reading one tool.
  virtual HRESULT STDMETHODCALLTYPE ChangeNumber(DOUBLE* pNumber) = 0;

  /// What a value of a field must keep to: the longest text in Unicode characters (a pair of
  /// surrogates is one), 0 when there is no such limit; whether there must be a value, in the
  /// field's own table; and the lowest and highest number, in the variant type of the field, both
  /// empty where the field holds no number, or one of any size. Of a property that is looked up in
  /// a list, the limits are those of the list's texts. A table may have rules of its own beside.
  virtual HRESULT STDMETHODCALLTYPE GetFieldLimits(BSTR bstrToolTable, BSTR bstrParamName,
                                                   LONG* plLongest, VARIANT_BOOL* pbRequired,
                                                   VARIANT* pLowest, VARIANT* pHighest) = 0;

  /// Why the last call that the calling thread made of a method of either class, but for this one,
  /// failed or left something undone, in English, a sentence to a line: what the database says, or
  /// each field that was passed over and why, such as "Field Name: the text is 3 too long, of 50
  /// characters at most." Empty when the call did everything, whatever its result was: DeleteTool
  /// always fails, SetMdbFile never. A value of a read-only field that is the same as the field's
  /// counts as done; so do values for fields of taps that follow from their tapping head. Works
  /// without a database.
  virtual HRESULT STDMETHODCALLTYPE LastError(BSTR* pText) = 0;

  /// Adds a text to the list in which a property is looked up, such as a coating, unless the list
  /// has it, as the database compares texts: without regard to letter case. Looks and adds in one
  /// go, so that two programs never add it twice. The other columns of the list take their
  /// defaults. E_FAIL for a property without a list, and for a text that is blank or too long.
  virtual HRESULT STDMETHODCALLTYPE AddPermissibleValue(BSTR bstrToolTable, BSTR bstrParamName,
                                                        BSTR bstrValue) = 0;

  /// Begins a group of changes, by methods of either class: until it ends they are seen by this
  /// program alone, and other programs that write wait, or give up. E_FAIL when a group is open
  /// already, and when another program writes for too long. A group whose program ends, or whose
  /// database is closed, is cancelled. Show no message and wait for nobody before its end.
  virtual HRESULT STDMETHODCALLTYPE BeginChanges() = 0;

  /// Stores all changes of the group, or none of them: E_FAIL when that fails, when an earlier
  /// error (a full disk) had made the database take them back, and without a group. The group is
  /// over in any case. A change that failed inside the group took only itself back.
  virtual HRESULT STDMETHODCALLTYPE EndChanges() = 0;

  /// Takes all changes of the group back. E_FAIL without a group.
  virtual HRESULT STDMETHODCALLTYPE CancelChanges() = 0;

  /// Copies the database to a file, as it is at one moment, while this program and others go on
  /// working with it; an open group of changes is not in the copy. Without a write-ahead log others
  /// that write wait until the pages are copied. The copy, a single file without a log, is read
  /// through and found in order before it gets its name: a file of that name is always whole.
  /// E_FAIL when there is a file of that name already, unless `bReplace`; a database that
  /// somebody is seen to have open is never replaced. Either path separator serves.
  virtual HRESULT STDMETHODCALLTYPE BackUp(BSTR bstrNewFile, VARIANT_BOOL bReplace) = 0;
};

#pragma GCC diagnostic pop
