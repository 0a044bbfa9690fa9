#include "database/records/DaoRecordset.h"

#include "database/records/DaoQueryDef.h"
#include "database/records/Recordset.h"
#include "platform/automation/Vectors.h"

using orxdb::ArrayAccess;
using orxdb::Variant;
using orxdb::Which;

namespace {

std::size_t FieldNamed(const orxdb::Recordset& recordset, const std::string& name) {
  const int index = recordset.FindField(name);
  if (index < 0) throw CDaoException(DaoError::BadField, "There is no field " + name);
  return static_cast<std::size_t>(index);
}

std::size_t FieldAt(const orxdb::Recordset& recordset, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= recordset.FieldCount()) {
    throw CDaoException(DaoError::BadField, "There is no field at that index");
  }
  return static_cast<std::size_t>(index);
}

Variant Read(orxdb::Recordset& recordset, std::size_t field) {
  Variant value;
  recordset.ReadField(field, *value.ptr());
  return value;
}

}  // namespace

CDaoRecordset::CDaoRecordset(CDaoDatabase* database) : m_database(database) {}
CDaoRecordset::~CDaoRecordset() = default;

void CDaoRecordset::Open(const CDaoQueryDef* query, int type, int /*options*/) {
  if (query == nullptr || !query->IsOpen()) {
    throw CDaoException(DaoError::Closed, "The query is not open");
  }
  m_database = query->GetDatabase();
  const auto& connection = m_database->GetConnection();
  const std::string& name = query->GetName();
  m_recordset = std::make_unique<orxdb::Recordset>(
      connection,
      name.empty() ? orxdb::SelectOfText(*connection, query->GetSQL())
                   : orxdb::SelectOfStoredQuery(*connection, name),
      name, type == dbOpenSnapshot);
}

void CDaoRecordset::Open(int type, const std::string& sql, int /*options*/) {
  if (m_database == nullptr) throw CDaoException(DaoError::Closed, "There is no database");
  const auto& connection = m_database->GetConnection();
  m_recordset = std::make_unique<orxdb::Recordset>(
      connection, orxdb::SelectOfText(*connection, sql), "", type == dbOpenSnapshot);
}

bool CDaoRecordset::IsOpen() const noexcept {
  return m_recordset != nullptr;
}
void CDaoRecordset::Close() noexcept {
  m_recordset.reset();
}

orxdb::Recordset& CDaoRecordset::Opened() const {
  if (!m_recordset) throw CDaoException(DaoError::Closed, "The recordset is not open");
  return *m_recordset;
}

void CDaoRecordset::MoveFirst() {
  Opened().MoveTo(Which::First);
}
void CDaoRecordset::MoveNext() {
  Opened().MoveNext();
}
void CDaoRecordset::MoveLast() {
  Opened().MoveTo(Which::Last);
}
bool CDaoRecordset::IsBOF() const {
  return Opened().AtBeginning();
}
bool CDaoRecordset::IsEOF() const {
  return Opened().AtEnd();
}

bool CDaoRecordset::FindFirst(const std::string& criteria) {
  return Opened().Find(criteria, Which::First);
}
bool CDaoRecordset::FindNext(const std::string& criteria) {
  return Opened().Find(criteria, Which::Next);
}
bool CDaoRecordset::FindLast(const std::string& criteria) {
  return Opened().Find(criteria, Which::Last);
}

long CDaoRecordset::GetRecordCount() const {
  return static_cast<long>(Opened().Count());
}

short CDaoRecordset::GetFieldCount() const {
  return static_cast<short>(Opened().FieldCount());
}

const std::string& CDaoRecordset::GetFieldName(int index) const {
  return Opened().FieldName(FieldAt(Opened(), index));
}

void CDaoRecordset::GetFieldInfo(int index, CDaoFieldInfo& info, int /*level*/) const {
  info = Opened().Describe(FieldAt(Opened(), index));
}

void CDaoRecordset::GetFieldInfo(const std::string& name, CDaoFieldInfo& info,
                                 int /*level*/) const {
  info = Opened().Describe(FieldNamed(Opened(), name));
}

Variant CDaoRecordset::GetFieldValue(int index) const {
  return Read(Opened(), FieldAt(Opened(), index));
}

Variant CDaoRecordset::GetFieldValue(const std::string& name) const {
  return Read(Opened(), FieldNamed(Opened(), name));
}

void CDaoRecordset::GetFieldValue(int index, Variant& value) const {
  value = GetFieldValue(index);
}

void CDaoRecordset::GetFieldValue(const std::string& name, Variant& value) const {
  value = GetFieldValue(name);
}

void CDaoRecordset::GetFieldValues(std::span<VARIANT> values) const {
  Opened().ReadFields(values);
}

void CDaoRecordset::GetFieldValues(std::span<const int> fields, std::span<Variant> values) const {
  Opened().ReadFields(fields, values);
}

void CDaoRecordset::AddNew() {
  Opened().AddNew();
}
void CDaoRecordset::Edit() {
  Opened().Edit();
}

void CDaoRecordset::SetFieldValue(const std::string& name, const VARIANT& value) {
  Opened().SetField(FieldNamed(Opened(), name), value);
}

void CDaoRecordset::SetFieldValueNull(const std::string& name) {
  SetFieldValue(name, Variant::Null().get());
}

void CDaoRecordset::Update() {
  Opened().Update();
}
void CDaoRecordset::Delete() {
  Opened().Delete();
}
void CDaoRecordset::Requery() {
  Opened().Requery();
}

Variant CDaoRecordset::GetBookmark() const {
  return orxdb::MakeByteVector(Opened().Bookmark());
}

void CDaoRecordset::SetBookmark(const VARIANT& bookmark) {
  if (bookmark.vt != (VT_ARRAY | VT_UI1) || SafeArrayGetDim(bookmark.parray) != 1) {
    throw CDaoException(DaoError::BadBookmark, "The value is no bookmark");
  }
  const ArrayAccess<BYTE> access(bookmark.parray);
  Opened().GoTo(access.elements());
}

orxdb::Position CDaoRecordset::GetPosition() const {
  return Opened().GetPosition();
}
bool CDaoRecordset::ReturnTo(const orxdb::Position& position) {
  return Opened().ReturnTo(position);
}

Variant CDaoRecordset::GetLastModifiedBookmark() const {
  return orxdb::MakeByteVector(Opened().LastModifiedBookmark());
}
