-- Machine reamers with straight shanks. Tolerance_Class is that of the hole; for inch sizes the diameter tolerance.
-- Lengths and diameters are in the unit of the row.

CREATE TABLE REAMER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    Tolerance_Class TEXT(10) DEFAULT 'H7',
    "Flutes_#" SHORT DEFAULT 6,
    Flute_Length DOUBLE DEFAULT 38,
    Overall_Length DOUBLE DEFAULT 133,
    Shank_Diameter DOUBLE DEFAULT 10,
    Flute_Form TEXT(20) DEFAULT 'Straight',
    Standard TEXT(40),
    Material LONG DEFAULT 2,
    Coating LONG DEFAULT 1,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX REAMER_Name ON REAMER (Name COLLATE NOCASE);

CREATE VIEW Q_REAMER AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Tolerance_Class AS Tolerance_Class,
       T."Flutes_#" AS "Flutes_#",
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Flute_Form AS Flute_Form,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM REAMER AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO REAMER (Name, Diameter, Unit, Tolerance_Class, "Flutes_#", Flute_Length, Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Reamer 2 mm H7',     2, 'mm', 'H7', 4, 11,  49,    2, 'DIN 212'),
    ('Reamer 2.5 mm H7', 2.5, 'mm', 'H7', 4, 14,  57,  2.5, 'DIN 212'),
    ('Reamer 3 mm H7',     3, 'mm', 'H7', 4, 15,  61,    3, 'DIN 212'),
    ('Reamer 3.5 mm H7', 3.5, 'mm', 'H7', 4, 18,  70,  3.5, 'DIN 212'),
    ('Reamer 4 mm H7',     4, 'mm', 'H7', 4, 19,  75,    4, 'DIN 212'),
    ('Reamer 4.5 mm H7', 4.5, 'mm', 'H7', 6, 21,  80,  4.5, 'DIN 212'),
    ('Reamer 5 mm H7',     5, 'mm', 'H7', 6, 23,  86,    5, 'DIN 212'),
    ('Reamer 5.5 mm H7', 5.5, 'mm', 'H7', 6, 26,  93,  5.6, 'DIN 212'),
    ('Reamer 6 mm H7',     6, 'mm', 'H7', 6, 26,  93,  5.6, 'DIN 212'),
    ('Reamer 7 mm H7',     7, 'mm', 'H7', 6, 31, 109,  7.1, 'DIN 212'),
    ('Reamer 8 mm H7',     8, 'mm', 'H7', 6, 33, 117,    8, 'DIN 212'),
    ('Reamer 9 mm H7',     9, 'mm', 'H7', 6, 36, 125,    9, 'DIN 212'),
    ('Reamer 10 mm H7',   10, 'mm', 'H7', 6, 38, 133,   10, 'DIN 212'),
    ('Reamer 11 mm H7',   11, 'mm', 'H7', 6, 41, 142,   10, 'DIN 212'),
    ('Reamer 12 mm H7',   12, 'mm', 'H7', 6, 44, 151,   10, 'DIN 212'),
    ('Reamer 13 mm H7',   13, 'mm', 'H7', 6, 44, 151,   10, 'DIN 212'),
    ('Reamer 14 mm H7',   14, 'mm', 'H7', 6, 47, 160, 12.5, 'DIN 212'),
    ('Reamer 15 mm H7',   15, 'mm', 'H7', 8, 50, 162, 12.5, 'DIN 212'),
    ('Reamer 16 mm H7',   16, 'mm', 'H7', 8, 52, 170, 12.5, 'DIN 212'),
    ('Reamer 18 mm H7',   18, 'mm', 'H7', 8, 56, 182,   14, 'DIN 212'),
    ('Reamer 20 mm H7',   20, 'mm', 'H7', 8, 60, 195,   16, 'DIN 212');

-- Inch sizes, chucking reamers
INSERT INTO REAMER (Name, Diameter, Unit, Tolerance_Class, "Flutes_#", Flute_Length, Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Reamer 1/8 in',     0.125, 'in', '+0.0002', 4, 0.875,  3.5,  0.119, 'ASME B94.2'),
    ('Reamer 5/32 in',  0.15625, 'in', '+0.0002', 4,     1,    4, 0.1405, 'ASME B94.2'),
    ('Reamer 3/16 in',   0.1875, 'in', '+0.0002', 4, 1.125,  4.5, 0.1735, 'ASME B94.2'),
    ('Reamer 7/32 in',  0.21875, 'in', '+0.0002', 6,  1.25,    5,  0.205, 'ASME B94.2'),
    ('Reamer 1/4 in',      0.25, 'in', '+0.0002', 6,   1.5,    6, 0.2405, 'ASME B94.2'),
    ('Reamer 9/32 in',  0.28125, 'in', '+0.0002', 6,   1.5,    6, 0.2485, 'ASME B94.2'),
    ('Reamer 5/16 in',   0.3125, 'in', '+0.0002', 6,   1.5,    6, 0.2792, 'ASME B94.2'),
    ('Reamer 11/32 in', 0.34375, 'in', '+0.0002', 6,   1.5,    6, 0.2792, 'ASME B94.2'),
    ('Reamer 3/8 in',     0.375, 'in', '+0.0002', 6,  1.75,    7, 0.3105, 'ASME B94.2'),
    ('Reamer 7/16 in',   0.4375, 'in', '+0.0002', 6,  1.75,    7,  0.373, 'ASME B94.2'),
    ('Reamer 1/2 in',       0.5, 'in', '+0.0002', 6,     2,    8, 0.4355, 'ASME B94.2'),
    ('Reamer 9/16 in',   0.5625, 'in', '+0.0002', 8,     2,    8, 0.4355, 'ASME B94.2'),
    ('Reamer 5/8 in',     0.625, 'in', '+0.0002', 8,  2.25,    9,  0.562, 'ASME B94.2'),
    ('Reamer 11/16 in',  0.6875, 'in', '+0.0002', 8,  2.25,    9,  0.562, 'ASME B94.2'),
    ('Reamer 3/4 in',      0.75, 'in', '+0.0002', 8,   2.5,  9.5, 0.6245, 'ASME B94.2'),
    ('Reamer 7/8 in',     0.875, 'in', '+0.0002', 8, 2.625,   10, 0.7495, 'ASME B94.2'),
    ('Reamer 1 in',           1, 'in', '+0.0002', 8,  2.75, 10.5, 0.8745, 'ASME B94.2');

UPDATE REAMER SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
