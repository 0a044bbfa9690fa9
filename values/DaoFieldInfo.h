#pragma once

#include <string>

/// Field type codes of the database.
enum DaoFieldType : short {
  dbBoolean = 1,
  dbByte = 2,
  dbInteger = 3,
  dbLong = 4,
  dbCurrency = 5,
  dbSingle = 6,
  dbDouble = 7,
  dbDate = 8,
  dbBinary = 9,
  dbText = 10,
  dbLongBinary = 11,
  dbMemo = 12,
  dbGUID = 15,
  dbBigInt = 16,
};

/// Field attribute bits.
inline constexpr long dbFixedField = 0x1;
inline constexpr long dbVariableField = 0x2;
inline constexpr long dbAutoIncrField = 0x10;
inline constexpr long dbUpdatableField = 0x20;

/// How much of a field's description is wanted at least: all of it comes in any case.
inline constexpr int AFX_DAO_PRIMARY_INFO = 1;    ///< name, type, size, attributes
inline constexpr int AFX_DAO_SECONDARY_INFO = 2;  ///< and position, origin, nullability
inline constexpr int AFX_DAO_ALL_INFO = 4;        ///< and the default value

/// The description of one field of a recordset.
struct CDaoFieldInfo {
  std::string m_strName;
  short m_nType = 0;  ///< a `DaoFieldType`
  long m_lSize = 0;   ///< bytes; for text the longest length in characters, 0 when unlimited
  long m_lAttributes = 0;

  short m_nOrdinalPosition = 0;
  bool m_bRequired = false;
  bool m_bAllowZeroLength = false;
  std::string m_strSourceField;  ///< base table column; empty for a computed field
  std::string m_strSourceTable;  ///< base table; empty for a computed field

  std::string m_strDefaultValue;  ///< SQL text of the column's default; empty when there is none
};
