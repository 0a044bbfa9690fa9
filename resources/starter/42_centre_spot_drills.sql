-- Centre drills with double ends. Pilot_Diameter is the hole, Body_Diameter the shank; angles are in degrees,
-- lengths and diameters in the unit of the row.

CREATE TABLE CENTER_DRILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Pilot_Diameter DOUBLE DEFAULT 2.5,
    Body_Diameter DOUBLE DEFAULT 6.3,
    Unit TEXT(2) DEFAULT 'mm',
    Form TEXT(20) DEFAULT 'A',
    Point_Angle DOUBLE DEFAULT 118,
    Countersink_Angle DOUBLE DEFAULT 60,
    Pilot_Length DOUBLE DEFAULT 3.1,
    Overall_Length DOUBLE DEFAULT 45,
    Standard TEXT(40),
    Material LONG DEFAULT 1,
    Coating LONG DEFAULT 1,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Pilot_Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX CENTER_DRILL_Name ON CENTER_DRILL (Name COLLATE NOCASE);

CREATE VIEW Q_CENTER_DRILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Pilot_Diameter AS Pilot_Diameter,
       T.Body_Diameter AS Body_Diameter,
       T.Unit AS Unit,
       T.Form AS Form,
       T.Point_Angle AS Point_Angle,
       T.Countersink_Angle AS Countersink_Angle,
       T.Pilot_Length AS Pilot_Length,
       T.Overall_Length AS Overall_Length,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM CENTER_DRILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Form A, straight flanks
INSERT INTO CENTER_DRILL (Name, Pilot_Diameter, Body_Diameter, Unit, Form, Pilot_Length, Overall_Length,
    Standard) VALUES
    ('Centre drill A 1 mm',       1, 3.15, 'mm', 'A',  1.3, 31.5, 'DIN 333 A'),
    ('Centre drill A 1.25 mm', 1.25, 3.15, 'mm', 'A',  1.6, 31.5, 'DIN 333 A'),
    ('Centre drill A 1.6 mm',   1.6,    4, 'mm', 'A',    2, 35.5, 'DIN 333 A'),
    ('Centre drill A 2 mm',       2,    5, 'mm', 'A',  2.5,   40, 'DIN 333 A'),
    ('Centre drill A 2.5 mm',   2.5,  6.3, 'mm', 'A',  3.1,   45, 'DIN 333 A'),
    ('Centre drill A 3.15 mm', 3.15,    8, 'mm', 'A',  3.9,   50, 'DIN 333 A'),
    ('Centre drill A 4 mm',       4,   10, 'mm', 'A',    5,   56, 'DIN 333 A'),
    ('Centre drill A 5 mm',       5, 12.5, 'mm', 'A',  6.3,   63, 'DIN 333 A'),
    ('Centre drill A 6.3 mm',   6.3,   16, 'mm', 'A',    8,   71, 'DIN 333 A'),
    ('Centre drill A 8 mm',       8,   20, 'mm', 'A', 10.1,   80, 'DIN 333 A'),
    ('Centre drill A 10 mm',     10,   25, 'mm', 'A', 12.8,  100, 'DIN 333 A');

-- Form R, curved flanks
INSERT INTO CENTER_DRILL (Name, Pilot_Diameter, Body_Diameter, Unit, Form, Pilot_Length, Overall_Length,
    Standard) VALUES
    ('Centre drill R 1 mm',       1, 3.15, 'mm', 'R',    3, 31.5, 'DIN 333 R'),
    ('Centre drill R 1.6 mm',   1.6,    4, 'mm', 'R', 4.25, 35.5, 'DIN 333 R'),
    ('Centre drill R 2 mm',       2,    5, 'mm', 'R',  5.3,   40, 'DIN 333 R'),
    ('Centre drill R 2.5 mm',   2.5,  6.3, 'mm', 'R',  6.7,   45, 'DIN 333 R'),
    ('Centre drill R 3.15 mm', 3.15,    8, 'mm', 'R',  8.5,   50, 'DIN 333 R'),
    ('Centre drill R 4 mm',       4,   10, 'mm', 'R', 10.6,   56, 'DIN 333 R'),
    ('Centre drill R 5 mm',       5, 12.5, 'mm', 'R', 13.2,   63, 'DIN 333 R');

-- Inch sizes by number
INSERT INTO CENTER_DRILL (Name, Pilot_Diameter, Body_Diameter, Unit, Form, Pilot_Length, Overall_Length,
    Standard) VALUES
    ('Centre drill #00',    0.025,  0.125, 'in', 'Plain',     0.03, 1.125, 'ASME B94.11'),
    ('Centre drill #0',   0.03125,  0.125, 'in', 'Plain',    0.038, 1.125, 'ASME B94.11'),
    ('Centre drill #1',  0.046875,  0.125, 'in', 'Plain', 0.046875,  1.25, 'ASME B94.11'),
    ('Centre drill #2',  0.078125, 0.1875, 'in', 'Plain', 0.078125, 1.875, 'ASME B94.11'),
    ('Centre drill #3',  0.109375,   0.25, 'in', 'Plain', 0.109375,     2, 'ASME B94.11'),
    ('Centre drill #4',     0.125, 0.3125, 'in', 'Plain',    0.125, 2.125, 'ASME B94.11'),
    ('Centre drill #5',    0.1875, 0.4375, 'in', 'Plain',   0.1875,  2.75, 'ASME B94.11'),
    ('Centre drill #6',   0.21875,    0.5, 'in', 'Plain',  0.21875,     3, 'ASME B94.11'),
    ('Centre drill #7',      0.25,  0.625, 'in', 'Plain',     0.25,  3.25, 'ASME B94.11'),
    ('Centre drill #8',    0.3125,   0.75, 'in', 'Plain',   0.3125,   3.5, 'ASME B94.11');

UPDATE CENTER_DRILL SET Countersink_Angle = 0, Comment = 'Curved flank, no countersink angle' WHERE Form = 'R';
UPDATE CENTER_DRILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Body_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);

-- Spot drills for starting holes true. Point_Angle is in degrees; lengths and diameters are in the unit of the row.

CREATE TABLE SPOT_DRILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    Point_Angle DOUBLE DEFAULT 90,
    Flute_Length DOUBLE DEFAULT 25,
    Overall_Length DOUBLE DEFAULT 89,
    Shank_Diameter DOUBLE DEFAULT 10,
    "Flutes_#" SHORT DEFAULT 2,
    Standard TEXT(40),
    Material LONG DEFAULT 2,
    Coating LONG DEFAULT 3,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX SPOT_DRILL_Name ON SPOT_DRILL (Name COLLATE NOCASE);

CREATE VIEW Q_SPOT_DRILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Point_Angle AS Point_Angle,
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T."Flutes_#" AS "Flutes_#",
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM SPOT_DRILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes, 90 degrees
INSERT INTO SPOT_DRILL (Name, Diameter, Unit, Point_Angle, Flute_Length, Overall_Length, Shank_Diameter) VALUES
    ('Spot drill 3 mm 90 deg',   3, 'mm', 90,  8,  49,  3),
    ('Spot drill 4 mm 90 deg',   4, 'mm', 90, 10,  55,  4),
    ('Spot drill 5 mm 90 deg',   5, 'mm', 90, 14,  62,  5),
    ('Spot drill 6 mm 90 deg',   6, 'mm', 90, 16,  66,  6),
    ('Spot drill 8 mm 90 deg',   8, 'mm', 90, 21,  79,  8),
    ('Spot drill 10 mm 90 deg', 10, 'mm', 90, 25,  89, 10),
    ('Spot drill 12 mm 90 deg', 12, 'mm', 90, 30, 102, 12),
    ('Spot drill 16 mm 90 deg', 16, 'mm', 90, 35, 115, 16),
    ('Spot drill 20 mm 90 deg', 20, 'mm', 90, 40, 131, 20),
    ('Spot drill 25 mm 90 deg', 25, 'mm', 90, 45, 138, 25);

-- Metric sizes, 120 degrees
INSERT INTO SPOT_DRILL (Name, Diameter, Unit, Point_Angle, Flute_Length, Overall_Length, Shank_Diameter) VALUES
    ('Spot drill 3 mm 120 deg',   3, 'mm', 120,  8,  49,  3),
    ('Spot drill 4 mm 120 deg',   4, 'mm', 120, 10,  55,  4),
    ('Spot drill 5 mm 120 deg',   5, 'mm', 120, 14,  62,  5),
    ('Spot drill 6 mm 120 deg',   6, 'mm', 120, 16,  66,  6),
    ('Spot drill 8 mm 120 deg',   8, 'mm', 120, 21,  79,  8),
    ('Spot drill 10 mm 120 deg', 10, 'mm', 120, 25,  89, 10),
    ('Spot drill 12 mm 120 deg', 12, 'mm', 120, 30, 102, 12),
    ('Spot drill 16 mm 120 deg', 16, 'mm', 120, 35, 115, 16),
    ('Spot drill 20 mm 120 deg', 20, 'mm', 120, 40, 131, 20),
    ('Spot drill 25 mm 120 deg', 25, 'mm', 120, 45, 138, 25);

-- Metric sizes, 142 degrees
INSERT INTO SPOT_DRILL (Name, Diameter, Unit, Point_Angle, Flute_Length, Overall_Length, Shank_Diameter) VALUES
    ('Spot drill 3 mm 142 deg',   3, 'mm', 142,  8,  49,  3),
    ('Spot drill 4 mm 142 deg',   4, 'mm', 142, 10,  55,  4),
    ('Spot drill 5 mm 142 deg',   5, 'mm', 142, 14,  62,  5),
    ('Spot drill 6 mm 142 deg',   6, 'mm', 142, 16,  66,  6),
    ('Spot drill 8 mm 142 deg',   8, 'mm', 142, 21,  79,  8),
    ('Spot drill 10 mm 142 deg', 10, 'mm', 142, 25,  89, 10),
    ('Spot drill 12 mm 142 deg', 12, 'mm', 142, 30, 102, 12),
    ('Spot drill 16 mm 142 deg', 16, 'mm', 142, 35, 115, 16);

-- Inch sizes, 90 degrees
INSERT INTO SPOT_DRILL (Name, Diameter, Unit, Point_Angle, Flute_Length, Overall_Length, Shank_Diameter) VALUES
    ('Spot drill 1/8 in 90 deg',   0.125, 'in', 90,   0.5,     2,  0.125),
    ('Spot drill 3/16 in 90 deg', 0.1875, 'in', 90, 0.625,  2.25, 0.1875),
    ('Spot drill 1/4 in 90 deg',    0.25, 'in', 90,  0.75,   2.5,   0.25),
    ('Spot drill 5/16 in 90 deg', 0.3125, 'in', 90, 0.875,     3, 0.3125),
    ('Spot drill 3/8 in 90 deg',   0.375, 'in', 90,     1, 3.125,  0.375),
    ('Spot drill 1/2 in 90 deg',     0.5, 'in', 90, 1.125,  3.75,    0.5),
    ('Spot drill 5/8 in 90 deg',   0.625, 'in', 90, 1.375,   4.5,  0.625),
    ('Spot drill 3/4 in 90 deg',    0.75, 'in', 90,   1.5,     5,   0.75),
    ('Spot drill 1 in 90 deg',         1, 'in', 90,  1.75,   5.5,      1);

-- Inch sizes, 120 degrees
INSERT INTO SPOT_DRILL (Name, Diameter, Unit, Point_Angle, Flute_Length, Overall_Length, Shank_Diameter) VALUES
    ('Spot drill 1/8 in 120 deg',   0.125, 'in', 120,   0.5,     2,  0.125),
    ('Spot drill 3/16 in 120 deg', 0.1875, 'in', 120, 0.625,  2.25, 0.1875),
    ('Spot drill 1/4 in 120 deg',    0.25, 'in', 120,  0.75,   2.5,   0.25),
    ('Spot drill 5/16 in 120 deg', 0.3125, 'in', 120, 0.875,     3, 0.3125),
    ('Spot drill 3/8 in 120 deg',   0.375, 'in', 120,     1, 3.125,  0.375),
    ('Spot drill 1/2 in 120 deg',     0.5, 'in', 120, 1.125,  3.75,    0.5),
    ('Spot drill 5/8 in 120 deg',   0.625, 'in', 120, 1.375,   4.5,  0.625),
    ('Spot drill 3/4 in 120 deg',    0.75, 'in', 120,   1.5,     5,   0.75),
    ('Spot drill 1 in 120 deg',         1, 'in', 120,  1.75,   5.5,      1);

UPDATE SPOT_DRILL SET Standard = 'Common series';
UPDATE SPOT_DRILL SET Material = (SELECT ID FROM TOOL_MATERIAL WHERE Name = 'Solid carbide')
WHERE Point_Angle = 142;
UPDATE SPOT_DRILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
