-- Jobber-length twist drills with straight shanks. Size_Code is the number, letter or fraction of an inch size.
-- Point_Angle is in degrees; lengths and diameters are in the unit of the row.

CREATE TABLE TWIST_DRILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    Size_Code TEXT(10),
    Point_Angle DOUBLE DEFAULT 118,
    Flute_Length DOUBLE DEFAULT 87,
    Overall_Length DOUBLE DEFAULT 133,
    Shank_Diameter DOUBLE DEFAULT 10,
    "Flutes_#" SHORT DEFAULT 2,
    Coolant_Through BOOLEAN DEFAULT 0,
    Standard TEXT(40),
    Material LONG DEFAULT 1,
    Coating LONG DEFAULT 2,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX TWIST_DRILL_Name ON TWIST_DRILL (Name COLLATE NOCASE);

CREATE VIEW Q_TWIST_DRILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Size_Code AS Size_Code,
       T.Point_Angle AS Point_Angle,
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T."Flutes_#" AS "Flutes_#",
       T.Coolant_Through AS Coolant_Through,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM TWIST_DRILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO TWIST_DRILL (Name, Diameter, Unit, Flute_Length, Overall_Length, Shank_Diameter, Standard) VALUES
    ('Drill 1 mm',       1, 'mm',  12,  34,    1, 'DIN 338'),
    ('Drill 1.2 mm',   1.2, 'mm',  16,  38,  1.2, 'DIN 338'),
    ('Drill 1.5 mm',   1.5, 'mm',  18,  40,  1.5, 'DIN 338'),
    ('Drill 1.6 mm',   1.6, 'mm',  20,  43,  1.6, 'DIN 338'),
    ('Drill 1.8 mm',   1.8, 'mm',  22,  46,  1.8, 'DIN 338'),
    ('Drill 2 mm',       2, 'mm',  24,  49,    2, 'DIN 338'),
    ('Drill 2.2 mm',   2.2, 'mm',  27,  53,  2.2, 'DIN 338'),
    ('Drill 2.5 mm',   2.5, 'mm',  30,  57,  2.5, 'DIN 338'),
    ('Drill 2.8 mm',   2.8, 'mm',  33,  61,  2.8, 'DIN 338'),
    ('Drill 3 mm',       3, 'mm',  33,  61,    3, 'DIN 338'),
    ('Drill 3.2 mm',   3.2, 'mm',  36,  65,  3.2, 'DIN 338'),
    ('Drill 3.3 mm',   3.3, 'mm',  36,  65,  3.3, 'DIN 338'),
    ('Drill 3.5 mm',   3.5, 'mm',  39,  70,  3.5, 'DIN 338'),
    ('Drill 3.8 mm',   3.8, 'mm',  43,  75,  3.8, 'DIN 338'),
    ('Drill 4 mm',       4, 'mm',  43,  75,    4, 'DIN 338'),
    ('Drill 4.2 mm',   4.2, 'mm',  43,  75,  4.2, 'DIN 338'),
    ('Drill 4.5 mm',   4.5, 'mm',  47,  80,  4.5, 'DIN 338'),
    ('Drill 4.8 mm',   4.8, 'mm',  52,  86,  4.8, 'DIN 338'),
    ('Drill 5 mm',       5, 'mm',  52,  86,    5, 'DIN 338'),
    ('Drill 5.2 mm',   5.2, 'mm',  52,  86,  5.2, 'DIN 338'),
    ('Drill 5.5 mm',   5.5, 'mm',  57,  93,  5.5, 'DIN 338'),
    ('Drill 5.8 mm',   5.8, 'mm',  57,  93,  5.8, 'DIN 338'),
    ('Drill 6 mm',       6, 'mm',  57,  93,    6, 'DIN 338'),
    ('Drill 6.5 mm',   6.5, 'mm',  63, 101,  6.5, 'DIN 338'),
    ('Drill 6.8 mm',   6.8, 'mm',  69, 109,  6.8, 'DIN 338'),
    ('Drill 7 mm',       7, 'mm',  69, 109,    7, 'DIN 338'),
    ('Drill 7.5 mm',   7.5, 'mm',  69, 109,  7.5, 'DIN 338'),
    ('Drill 8 mm',       8, 'mm',  75, 117,    8, 'DIN 338'),
    ('Drill 8.5 mm',   8.5, 'mm',  75, 117,  8.5, 'DIN 338'),
    ('Drill 9 mm',       9, 'mm',  81, 125,    9, 'DIN 338'),
    ('Drill 9.5 mm',   9.5, 'mm',  81, 125,  9.5, 'DIN 338'),
    ('Drill 10 mm',     10, 'mm',  87, 133,   10, 'DIN 338'),
    ('Drill 10.2 mm', 10.2, 'mm',  87, 133, 10.2, 'DIN 338'),
    ('Drill 10.5 mm', 10.5, 'mm',  87, 133, 10.5, 'DIN 338'),
    ('Drill 11 mm',     11, 'mm',  94, 142,   11, 'DIN 338'),
    ('Drill 11.5 mm', 11.5, 'mm',  94, 142, 11.5, 'DIN 338'),
    ('Drill 12 mm',     12, 'mm', 101, 151,   12, 'DIN 338'),
    ('Drill 12.5 mm', 12.5, 'mm', 101, 151, 12.5, 'DIN 338'),
    ('Drill 13 mm',     13, 'mm', 101, 151,   13, 'DIN 338'),
    ('Drill 14 mm',     14, 'mm', 108, 160,   14, 'DIN 338'),
    ('Drill 15 mm',     15, 'mm', 114, 169,   15, 'DIN 338'),
    ('Drill 16 mm',     16, 'mm', 120, 178,   16, 'DIN 338'),
    ('Drill 17.5 mm', 17.5, 'mm', 130, 191, 17.5, 'DIN 338'),
    ('Drill 18 mm',     18, 'mm', 130, 191,   18, 'DIN 338'),
    ('Drill 20 mm',     20, 'mm', 140, 205,   20, 'DIN 338');

-- Fraction sizes
INSERT INTO TWIST_DRILL (Name, Diameter, Unit, Size_Code, Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('Drill 1/16 in',    0.0625, 'in', '1/16',   0.875, 1.875,   0.0625, 'ASME B94.11'),
    ('Drill 5/64 in',  0.078125, 'in', '5/64',       1,     2, 0.078125, 'ASME B94.11'),
    ('Drill 3/32 in',   0.09375, 'in', '3/32',    1.25,  2.25,  0.09375, 'ASME B94.11'),
    ('Drill 1/8 in',      0.125, 'in', '1/8',    1.625,  2.75,    0.125, 'ASME B94.11'),
    ('Drill 5/32 in',   0.15625, 'in', '5/32',       2, 3.125,  0.15625, 'ASME B94.11'),
    ('Drill 3/16 in',    0.1875, 'in', '3/16',  2.3125,   3.5,   0.1875, 'ASME B94.11'),
    ('Drill 7/32 in',   0.21875, 'in', '7/32',     2.5,  3.75,  0.21875, 'ASME B94.11'),
    ('Drill 1/4 in',       0.25, 'in', '1/4',     2.75,     4,     0.25, 'ASME B94.11'),
    ('Drill 9/32 in',   0.28125, 'in', '9/32',  2.9375,  4.25,  0.28125, 'ASME B94.11'),
    ('Drill 5/16 in',    0.3125, 'in', '5/16',  3.1875,   4.5,   0.3125, 'ASME B94.11'),
    ('Drill 11/32 in',  0.34375, 'in', '11/32', 3.4375,  4.75,  0.34375, 'ASME B94.11'),
    ('Drill 3/8 in',      0.375, 'in', '3/8',    3.625,     5,    0.375, 'ASME B94.11'),
    ('Drill 13/32 in',  0.40625, 'in', '13/32',  3.875,  5.25,  0.40625, 'ASME B94.11'),
    ('Drill 27/64 in', 0.421875, 'in', '27/64', 3.9375, 5.375, 0.421875, 'ASME B94.11'),
    ('Drill 7/16 in',    0.4375, 'in', '7/16',  4.0625,   5.5,   0.4375, 'ASME B94.11'),
    ('Drill 15/32 in',  0.46875, 'in', '15/32', 4.3125,  5.75,  0.46875, 'ASME B94.11'),
    ('Drill 1/2 in',        0.5, 'in', '1/2',      4.5,     6,      0.5, 'ASME B94.11');

-- Number sizes
INSERT INTO TWIST_DRILL (Name, Diameter, Unit, Size_Code, Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('Drill #50',   0.07, 'in', '#50',      1,     2,   0.07, 'ASME B94.11'),
    ('Drill #43',  0.089, 'in', '#43',   1.25,  2.25,  0.089, 'ASME B94.11'),
    ('Drill #38', 0.1015, 'in', '#38', 1.4375,   2.5, 0.1015, 'ASME B94.11'),
    ('Drill #36', 0.1065, 'in', '#36', 1.4375,   2.5, 0.1065, 'ASME B94.11'),
    ('Drill #33',  0.113, 'in', '#33',    1.5, 2.625,  0.113, 'ASME B94.11'),
    ('Drill #29',  0.136, 'in', '#29',   1.75, 2.875,  0.136, 'ASME B94.11'),
    ('Drill #25', 0.1495, 'in', '#25',  1.875,     3, 0.1495, 'ASME B94.11'),
    ('Drill #21',  0.159, 'in', '#21',  2.125,  3.25,  0.159, 'ASME B94.11'),
    ('Drill #16',  0.177, 'in', '#16', 2.1875, 3.375,  0.177, 'ASME B94.11'),
    ('Drill #7',   0.201, 'in', '#7',  2.4375, 3.625,  0.201, 'ASME B94.11'),
    ('Drill #3',   0.213, 'in', '#3',     2.5,  3.75,  0.213, 'ASME B94.11');

-- Letter sizes
INSERT INTO TWIST_DRILL (Name, Diameter, Unit, Size_Code, Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('Drill letter A', 0.234, 'in', 'A',  2.625, 3.875, 0.234, 'ASME B94.11'),
    ('Drill letter F', 0.257, 'in', 'F',  2.875, 4.125, 0.257, 'ASME B94.11'),
    ('Drill letter I', 0.272, 'in', 'I',  2.875, 4.125, 0.272, 'ASME B94.11'),
    ('Drill letter Q', 0.332, 'in', 'Q', 3.4375,  4.75, 0.332, 'ASME B94.11'),
    ('Drill letter R', 0.339, 'in', 'R', 3.4375,  4.75, 0.339, 'ASME B94.11'),
    ('Drill letter U', 0.368, 'in', 'U',  3.625,     5, 0.368, 'ASME B94.11');

UPDATE TWIST_DRILL SET IsFavorite = -1, Comment = 'Tap drill'
WHERE Name IN ('Drill 3.3 mm', 'Drill 4.2 mm', 'Drill 5 mm',
    'Drill 6.8 mm', 'Drill 8.5 mm', 'Drill 10.2 mm', 'Drill #7');
UPDATE TWIST_DRILL SET Holder = (SELECT ID FROM HOLDER WHERE Name = 'Drill chuck 13 mm')
WHERE AUX_Metric_Diameter <= 13;
UPDATE TWIST_DRILL SET Holder = (SELECT ID FROM HOLDER WHERE Name = 'ER40 collet chuck')
WHERE AUX_Metric_Diameter > 13;
