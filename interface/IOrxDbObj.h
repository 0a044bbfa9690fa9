// The interface of the tool database component. To host it include interface/ToolHost.h, which
// brings the owners of objects, variants and strings besides, in namespace orxdb:
//
//   ComPtr<IOrxDbObj> db;
//   CoCreateInstance(CLSID_OrxDbObj, nullptr, CLSCTX_INPROC_SERVER, IOrxDbObj::iid, db.putVoid());
//   db->OpenDefaultDataBase();
//   Variant names, values;
//   for (db->GetFirstTool(table, names.put(), values.put()); !values.empty();
//        db->GetNextTool(table, values.put())) { ... }
//
// Conventions of all methods:
// - The result is S_OK or E_FAIL. A failing method sets the calling thread's error information:
//   description "ORX DB Error", interface IOrxDbObj, source the registered ProgID; the cause is
//   not passed on. A succeeding method leaves the error information alone.
// - Nothing found and the end of a list are no failures: S_OK, and the out-parameter stays as the
//   caller passed it, usually empty. Test the out-parameter, not the status.
// - "Empty" is a variant of type VT_EMPTY. Where an out-parameter must be empty, anything else in
//   it, VT_NULL included, gives E_FAIL. Where that is not said, it is overwritten, not released.
// - What comes out belongs to the caller, who frees it with SysFreeString and VariantClear.
// - Names of tables, fields and properties are compared exactly, letter case included; criteria
//   are compared by the rules of the database.
// - Tables are named as GetToolTypes names them, without the "Q_" of their stored query.
// - A call waits up to five seconds for other programs that hold the file, and the database works
//   up to ten seconds on one statement, the ordering of a very large table for instance, and with
//   up to 256 MiB of memory, what is sorted and kept included; then the call fails.
// - A text, a picture, and a record as a whole may be up to 16 MiB long. Of what another program
//   stored beyond that, the value cannot be read and the record cannot be changed; a walk fails
//   where it comes to such a record.
//
// Property arrays describe one record: a name array (VT_ARRAY | VT_BSTR) and a value array
// (VT_ARRAY | VT_VARIANT) of equal length, one dimension, lower bound 0; element i of the values
// belongs to element i of the names. They hold every field of the record in the order of the
// table's stored query, hidden ones too; null fields are VT_NULL.
//
// All objects of a process share one open database, and every tool table has one cursor that all
// callers share. Creating an object starts anew with a closed database; releasing any object
// closes the database for all of them. Hold one object at a time.
#pragma once

#include "platform/automation/Unknown.h"

/// Class identifier of `OrxDbObj`.
inline constexpr CLSID CLSID_OrxDbObj = {
    0x5cfec078, 0x5a02, 0x4476, {0xbd, 0x65, 0xed, 0xde, 0x95, 0xdc, 0x12, 0x4c}};
/// Interface identifier of `IOrxDbObj`.
inline constexpr IID IID_IOrxDbObj = {
    0xa813cf19, 0x57d3, 0x4a92, {0xbf, 0x7d, 0x4c, 0xe9, 0xca, 0x08, 0x6e, 0x42}};
/// Identifier of the type library `ORXDBLib`, version 1.0.
inline constexpr GUID LIBID_ORXDBLib = {
    0x7da8adae, 0x5a17, 0x44b3, {0xaf, 0x41, 0xc9, 0xc4, 0xf1, 0xb2, 0x60, 0x29}};

inline constexpr const OLECHAR* kOrxDbProgId = OLESTR("ORXDB.OrxDbObj.1");
inline constexpr const OLECHAR* kOrxDbVersionIndependentProgId = OLESTR("ORXDB.OrxDbObj");

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The tool database. Dispatch identifiers are 1 to 41 in the order below.
struct IOrxDbObj : public IDispatch {
  static constexpr const IID& iid = IID_IOrxDbObj;

  /// Opens the database file and reads its catalogue: the tool tables, the stock materials and the
  /// machining-data tables. Either path separator serves. Answers S_OK also when the file cannot
  /// be opened or the catalogue only in part; the methods that miss something fail later. Once a
  /// database is open a further call does nothing, whatever path it names.
  virtual HRESULT STDMETHODCALLTYPE SetMdbFile(BSTR bstrFileName) = 0;

  /// The kinds of tools in the catalogue, as VT_ARRAY | VT_BSTR from 0 of consecutive triples: tool
  /// type, tool subtype, table name. `Types` must be empty. The array has three elements for each
  /// distinct table name; when the catalogue names a table twice, the triples of the last rows do
  /// not fit and are left out. Without a database the array has no elements. A failing allocation
  /// leaves as an exception.
  virtual HRESULT STDMETHODCALLTYPE GetToolTypes(VARIANT* Types) = 0;

  /// Moves the table's cursor to the first tool that its filter selects and gives the tool's
  /// property arrays. Both out-parameters must be empty, and stay so when no tool is selected.
  /// E_FAIL for an unknown table, and for a filter that the database refuses.
  virtual HRESULT STDMETHODCALLTYPE GetFirstTool(BSTR bstrToolTable, VARIANT* pPropNames,
                                                 VARIANT* pProps) = 0;

  /// Moves on to the next selected tool and gives its value array; the names are those of
  /// GetFirstTool. `pProps` must be empty, and stays so at the end of the walk, however often the
  /// call is repeated. Without a filter the cursor then stands behind the last tool, with a filter
  /// on the last selected one.
  virtual HRESULT STDMETHODCALLTYPE GetNextTool(BSTR bstrToolTable, VARIANT* pProps) = 0;

  /// Sets what a walk over the table stops at, `bstrWhereStr` (criteria as behind WHERE; empty for
  /// every tool), and its order, `bstrOrderStr` (as behind ORDER BY). An empty order keeps the
  /// present order and position; another one runs the table's query again and puts the cursor on
  /// its first record. The criteria are kept also when the order fails, and are first looked at by
  /// the walk. After E_FAIL for a bad order the table cannot be browsed until a call with a good
  /// one.
  virtual HRESULT STDMETHODCALLTYPE SetTabFilter(BSTR bstrToolTable, BSTR bstrWhereStr,
                                                 BSTR bstrOrderStr) = 0;

  /// Adds a tool from caller's property arrays of equal length, any lower bounds, and gives its
  /// `ID` (set early: also when the call then fails). Empty and null values leave the fields at
  /// their defaults; lookup fields take the text that the table's query shows; a value that its
  /// field cannot hold is passed over. In TAPPING_HEAD a `Name` in use shows a message and fails.
  /// Adding moves the cursor to the first record. E_FAIL for an unknown table or field.
  virtual HRESULT STDMETHODCALLTYPE AddNewRecord(BSTR bstrToolTable, VARIANT* pPropNames,
                                                 VARIANT* pProps, LONG* pDbId) = 0;

  /// Changes fields of the tool with that `ID`; arrays as in AddNewRecord. Empty and null values
  /// set the field to null; names are not checked for uniqueness. The cursor stays on its record.
  /// E_FAIL for an unknown table, tool, field or lookup text.
  virtual HRESULT STDMETHODCALLTYPE SetToolProps(BSTR bstrToolTable, LONG lDbId,
                                                 VARIANT* pPropNames, VARIANT* pProps) = 0;

  /// The values that a lookup property may take, VT_ARRAY | VT_VARIANT from 0, in ascending order
  /// with duplicates. `pArrVal` must be empty, and stays so for a property without a list. For
  /// `TappingHead` of a tap and a diameter in millimetres above 0, only the heads that take it,
  /// followed by a null for "none". E_FAIL for an unknown table or property.
  virtual HRESULT STDMETHODCALLTYPE GetPermissibleValues(BSTR bstrToolTable, BSTR bstrParamName,
                                                         DOUBLE fMetricTapDiameter,
                                                         VARIANT* pArrVal) = 0;

  /// The text of a value in queries and exchange files: "NULL", integers plain, reals with six
  /// decimals and a full stop, "TRUE" or "FALSE", text as it is without quotes. A VT_UI4 above
  /// 2147483647 comes out negative. E_FAIL, and `*bstrValue` untouched, for any other type.
  virtual HRESULT STDMETHODCALLTYPE VariantToSQLString(VARIANT* pvarValue, BSTR* bstrValue) = 0;

  /// The text of a value for people: empty for no value, the language's yes or no for a flag, text
  /// as it is, numbers in their shortest usual form. `iPrecision` from 0 to 8 gives a real that
  /// many decimals; such a precision suits VT_R8 only, a VT_R4 is misread (its payload is taken for
  /// an eight-byte real); -1 is the default of late-bound calls. E_FAIL for any other type.
  virtual HRESULT STDMETHODCALLTYPE VariantToUIString(VARIANT* pvarValue, BSTR* bstrValue,
                                                      LONG iPrecision) = 0;

  /// The names of the table's search parameters, VT_ARRAY | VT_BSTR from 0; `pNames` is untouched
  /// when there are none. E_FAIL for an unknown table. A table that cannot be read, or has fewer
  /// fields than search parameters, leaves as an exception.
  virtual HRESULT STDMETHODCALLTYPE GetSearchParamNames(BSTR bstrToolTable, VARIANT* pNames) = 0;

  /// The variant type of a field. S_OK and `*vtType` untouched for an unknown table; E_FAIL for an
  /// unknown field, and for a field type without a variant type, which gives VT_NULL.
  virtual HRESULT STDMETHODCALLTYPE GetFieldType(BSTR bstrTolTable, BSTR bstrParamName,
                                                 USHORT* vtType) = 0;

  /// Deletes the tool with that `ID` if there is one. Always answers E_FAIL, also when the tool
  /// was deleted; read the tool to know. The cursor stays on its record, or goes to the last one
  /// when its own was deleted.
  virtual HRESULT STDMETHODCALLTYPE DeleteTool(BSTR bstrToolTable, LONG lDbId) = 0;

  /// The property arrays of the tool with that `ID`, whatever the filter. Both out-parameters must
  /// be empty, and stay so when no tool has it. The cursor stays on its record; one that stood
  /// behind the last tool ends on the last tool. E_FAIL for an unknown table.
  virtual HRESULT STDMETHODCALLTYPE GetToolProps(BSTR bstrToolTable, LONG lDbId,
                                                 VARIANT* pPropNames, VARIANT* pProps) = 0;

  /// Whether no tool of the table has that `Name` (by the database's comparison of text). The
  /// cursor stays on its record. E_FAIL for an unknown table, and for a name that breaks the
  /// criteria, such as one with an apostrophe.
  virtual HRESULT STDMETHODCALLTYPE IsToolNameUnique(BSTR bstrToolTable, BSTR bstrToolName,
                                                     VARIANT_BOOL* bUnique) = 0;

  /// Moves to the first stock material and gives its row as property arrays. Both out-parameters
  /// must be empty, and stay so when there is none.
  virtual HRESULT STDMETHODCALLTYPE GetFirstStockMaterial(VARIANT* pPropNames, VARIANT* pProps) = 0;

  /// Moves to the next stock material and gives its values. `pProps` must be empty, and stays so at
  /// the end of the list; asking again behind the end gives E_FAIL.
  virtual HRESULT STDMETHODCALLTYPE GetNextStockMaterial(VARIANT* pProps) = 0;

  /// The row of a feed-and-speed table for a material and a Brinell hardness (rounded down): the
  /// range that holds it, else the next higher range, else the next lower one. S_OK with nothing
  /// written for an unknown table or material.
  virtual HRESULT STDMETHODCALLTYPE GetRowByMaterialHardness(BSTR bstrTabName, BSTR bstrMatName,
                                                             DOUBLE fHardness, VARIANT* pPropNames,
                                                             VARIANT* pProps) = 0;

  /// The row of the drill-feed table for a diameter in the table's own unit, chosen as in
  /// GetRowByMaterialHardness, without rounding.
  virtual HRESULT STDMETHODCALLTYPE GetChosenDrillFeed(DOUBLE fDiameter, VARIANT* pPropNames,
                                                       VARIANT* pProps) = 0;

  /// The rows of a factor table around a value of its second column: the lower neighbour in
  /// `pProps1` and the upper one in `pProps2`, or the same row twice for an exact hit and beyond
  /// either end. Interpolation is left to the caller. S_OK with nothing written for an unknown
  /// table.
  virtual HRESULT STDMETHODCALLTYPE GetFactorByTable(BSTR bstrTabName, DOUBLE fSearchValue,
                                                     VARIANT* pPropNames, VARIANT* pProps1,
                                                     VARIANT* pProps2) = 0;

  /// Calls SetMdbFile with CAM\TOOLS\tools.mdb under the parent of the folder of the program that
  /// hosts the component.
  virtual HRESULT STDMETHODCALLTYPE OpenDefaultDataBase() = 0;

  /// The names of the table's fields and their variant types (VT_ARRAY | VT_I2), parallel, from 0;
  /// VT_NULL for a field type without a variant type. Always S_OK, with nothing written for an
  /// unknown table.
  virtual HRESULT STDMETHODCALLTYPE GetPropsTypes(BSTR bstrToolTable, VARIANT* pPropNames,
                                                  VARIANT* pTypes) = 0;

  /// Makes a text a pattern for LIKE that matches it: punctuation becomes the any-one-character
  /// wildcard "?"; letters, digits, blanks, "*", "[" and "]" stay. Null reads as empty.
  virtual HRESULT STDMETHODCALLTYPE FilterStrValueForQuery(BSTR bstrSrc, BSTR* bstrRes) = 0;

  /// Moves to the first stock material whose display type matches the name as a pattern (see
  /// FilterStrValueForQuery) and gives its row; GetNextStockMaterial goes on from there. Both
  /// out-parameters must be empty, and stay so without a match.
  virtual HRESULT STDMETHODCALLTYPE GetStockMaterialByName(BSTR bstrName, VARIANT* pPropNames,
                                                           VARIANT* pProps) = 0;

  /// The primary machining operation of a tool table, a new string, empty when the catalogue names
  /// none. S_OK with nothing written for a table that is not in the catalogue.
  virtual HRESULT STDMETHODCALLTYPE GetPrimaryOpByTable(BSTR bstrToolTable,
                                                        BSTR* bstrPrimaryOp) = 0;

  /// The property arrays that a new tool would start with. A temporary tool is added and deleted
  /// again, so `ID` and `Name` are its, and an identifier is used up. Both out-parameters must be
  /// empty, and stay so for an unknown table. The cursor stays on its record.
  ///
  /// Deletes the tool at the cursor instead when the temporary one is not stored (a column that
  /// must have a value has no default, a constraint or trigger refuses it, in TAPPING_HEAD a head
  /// has its name already, the file is full or locked) or not shown by the table's stored query
  /// (an inner join). The first kind takes no tool with it while the cursor is behind the last one,
  /// where GetNextTool gives nothing. docs/schemas.md tells what a table needs.
  virtual HRESULT STDMETHODCALLTYPE GetDefPropsValues(BSTR bstrToolTable, VARIANT* pPropNames,
                                                      VARIANT* pProps) = 0;

  /// Writes every tool of the table, whatever the filter, to an exchange file (created or
  /// overwritten) and leaves the cursor behind the last tool. A cursor that stands there already,
  /// as after an export, gives a file without tools: call GetFirstTool before. S_OK with nothing
  /// written for an unknown table or a file that cannot be opened; an error of the database ends
  /// the file early. `lFlags` has no effect.
  virtual HRESULT STDMETHODCALLTYPE ExportToolRecordsToFile(BSTR bstrToolTable, BSTR bstrFileName,
                                                            LONG lFlags) = 0;

  /// Adds the tools of an exchange file to the table that the file names, except those that the
  /// table already holds. Always S_OK: unusable files and lines are passed over, and an error ends
  /// the import with the tools added so far kept. `lFlags` has no effect.
  virtual HRESULT STDMETHODCALLTYPE ImportToolRecordsFromFile(BSTR bstrFileName, LONG lFlags) = 0;

  /// The default name, by the table's name format, of the stored tool with that `ID`. Always S_OK,
  /// with nothing written for an unknown table.
  virtual HRESULT STDMETHODCALLTYPE GenerateDefToolName(BSTR bstrToolTable, LONG lId,
                                                        BSTR* bstrName) = 0;

  /// Looks a property up in a pair of property arrays: a copy of the first value of that name goes
  /// to `pProp`, its index to `lArrInd`. `pProp` must be empty, and stays so when the name is not
  /// found or an argument is unusable, all of which are S_OK.
  virtual HRESULT STDMETHODCALLTYPE FindPropByNameInArray(BSTR bstrPropName, VARIANT* pPropNames,
                                                          VARIANT* pProps, VARIANT* pProp,
                                                          LONG* lArrInd) = 0;

  /// The picture of a kind of tool as the catalogue holds it, VT_ARRAY | VT_UI1 from 0. S_OK with
  /// nothing written when `pPreView` is not empty or the table or its picture is missing.
  virtual HRESULT STDMETHODCALLTYPE GetToolSubtypePreview(BSTR bstrToolTable,
                                                          VARIANT* pPreView) = 0;

  /// The tapping heads that take a tap of a diameter in "mm" (any other unit means inches): names
  /// (VT_ARRAY | VT_BSTR) and identifiers (VT_ARRAY | VT_I4), parallel, from 0. Both out-parameters
  /// must be empty, and stay so when no head fits. Leaves its filter on TAPPING_HEAD and that
  /// table's cursor at the end of the walk.
  virtual HRESULT STDMETHODCALLTYPE GetTappingHeadsForTap(BSTR bstrUnit, DOUBLE fTapDiam,
                                                          VARIANT* pNames, VARIANT* pIDs) = 0;

  /// Whether a property is not meant to be shown, told from parts of its name. Needs no database.
  virtual HRESULT STDMETHODCALLTYPE IsHiddenProperty(BSTR bstrPropName, VARIANT_BOOL* bHidden) = 0;

  /// The number of records in the table, whatever the filter; 0 when the table is empty and when
  /// the cursor stands behind the last record, -1 for an unknown table (S_OK, too). E_FAIL and -1
  /// for a table without a cursor and for a filter that the database refuses. The cursor stays on
  /// its record.
  virtual HRESULT STDMETHODCALLTYPE GetSelectedRecordCount(BSTR bstrToolTable, LONG* lRecCount) = 0;

  /// Moves the cursor back to the record of a bookmark; E_FAIL for a bookmark that is stale or of
  /// another table. S_OK without an effect for an unknown table, and when the cursor stands behind
  /// the last record.
  virtual HRESULT STDMETHODCALLTYPE SetToolTableBookmark(BSTR bstrToolTable,
                                                         VARIANT varBookmark) = 0;

  /// The bookmark of the cursor's record, an opaque value; what `pvarBookmark` held is released.
  /// S_OK, and `pvarBookmark` untouched, for an unknown table, and when the cursor stands behind
  /// the last record.
  virtual HRESULT STDMETHODCALLTYPE GetToolTableBookmark(BSTR bstrToolTable,
                                                         VARIANT* pvarBookmark) = 0;

  /// The standard diameters of flat and ball end mills in inches, for `Diameter`: values and their
  /// display texts, both VT_ARRAY | VT_VARIANT from 0. `pArrVal` must be empty; nothing is written
  /// for any other property. The two property arrays are not looked at.
  virtual HRESULT STDMETHODCALLTYPE GetPermissibleValues2(BSTR bstrToolTable, VARIANT* pPropNames,
                                                          VARIANT* pProps, BSTR bstrParamName,
                                                          VARIANT* pArrVal,
                                                          VARIANT* pArrDispVal) = 0;

  /// Reserved: S_OK without an effect, whatever the arguments.
  virtual HRESULT STDMETHODCALLTYPE GenFirstTool(BSTR bstrToolTable, VARIANT* pNames,
                                                 VARIANT* pProps, VARIANT* pGenNames,
                                                 VARIANT* pGenProps) = 0;

  /// Reserved: S_OK without an effect, whatever the arguments.
  virtual HRESULT STDMETHODCALLTYPE GenNextTool(BSTR bstrToolTable, VARIANT* pGenProps) = 0;

  /// The default name of the tool described by the arrays. An empty `Name` among the values
  /// receives it; in TAPPING_HEAD the string gets a suffix _1, _2, ... when the name is in use.
  /// Always S_OK, with nothing written for an unknown table.
  virtual HRESULT STDMETHODCALLTYPE GenerateDefToolName2(BSTR bstrToolTable, VARIANT* pPropNames,
                                                         VARIANT* pProps, BSTR* bstrName) = 0;

  /// As GetToolTypes, from a stored query that shows the columns TOOL_TYPE, TOOL_SUBTYPE and
  /// TOOLTABLE_NAME (whose first two characters are cut off). `pTypes` is not tested, and untouched
  /// when the query has no rows. E_FAIL for a query that is missing or lacks a column.
  virtual HRESULT STDMETHODCALLTYPE GetToolTypesByStoredQuery(BSTR bstrQueryName,
                                                              VARIANT* pTypes) = 0;
};

#pragma GCC diagnostic pop
