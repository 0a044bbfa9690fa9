-- Two tables for random calls; the columns of the second bear other names.
PRAGMA journal_mode = WAL;
CREATE TABLE DRILL (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), D_Min_Diameter DOUBLE,
  D_Max_Diameter DOUBLE);
CREATE VIEW Q_DRILL AS SELECT ID AS ID, Name AS Name, D_Min_Diameter AS D_Min_Diameter,
  D_Max_Diameter AS D_Max_Diameter FROM DRILL;
CREATE TABLE TAPPING_HEAD (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50),
  AUX_Metric_Min_Diameter DOUBLE, AUX_Metric_Max_Diameter DOUBLE);
CREATE VIEW Q_TAPPING_HEAD AS SELECT ID AS "TAPPING_HEAD.ID", Name AS Name,
  AUX_Metric_Min_Diameter AS AUX_Metric_Min_Diameter,
  AUX_Metric_Max_Diameter AS AUX_Metric_Max_Diameter FROM TAPPING_HEAD;
INSERT INTO TYPES_DATA (TOOLTABLE_NAME, DEF_NAME_FORMAT) VALUES
  ('Q_DRILL', 'N*%D_Min_Diameter%'), ('Q_TAPPING_HEAD', 'N*%AUX_Metric_Min_Diameter%');
DROP VIEW Q_STOCK_MATERIAL;
CREATE TABLE STOCK (ID INTEGER PRIMARY KEY, DispType TEXT(9));
INSERT INTO STOCK (DispType) VALUES ('A'), ('B'), ('C');
CREATE VIEW Q_STOCK_MATERIAL AS SELECT ID AS ID, DispType AS DispType FROM STOCK;
