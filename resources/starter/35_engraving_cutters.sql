-- V-bits and engraving cutters, for lettering and chamfers in wood, plastics and light metals. Point_Angle is the
-- included angle in degrees, Tip_Diameter the flat that is left at the tip; Flute_Length is no shorter than the cone.
-- Lengths and diameters are in the unit of the row.

CREATE TABLE V_BIT (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 12,
    Unit TEXT(2) DEFAULT 'mm',
    Point_Angle DOUBLE DEFAULT 90,
    Tip_Diameter DOUBLE DEFAULT 0.2,
    "Flutes_#" SHORT DEFAULT 2,
    Flute_Length DOUBLE DEFAULT 7,
    Overall_Length DOUBLE DEFAULT 50,
    Shank_Diameter DOUBLE DEFAULT 8,
    Standard TEXT(40),
    Material LONG DEFAULT 6,
    Coating LONG DEFAULT 1,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX V_BIT_Name ON V_BIT (Name COLLATE NOCASE);

CREATE VIEW Q_V_BIT AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Point_Angle AS Point_Angle,
       T.Tip_Diameter AS Tip_Diameter,
       T."Flutes_#" AS "Flutes_#",
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM V_BIT AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO V_BIT (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length, Overall_Length,
    Shank_Diameter) VALUES
    ('V-bit 6 mm 30 deg',    6, 'mm',  30, 0.2, 2, 11, 50,  6),
    ('V-bit 6 mm 60 deg',    6, 'mm',  60, 0.2, 2,  6, 50,  6),
    ('V-bit 6 mm 90 deg',    6, 'mm',  90, 0.2, 2,  4, 50,  6),
    ('V-bit 8 mm 60 deg',    8, 'mm',  60, 0.2, 2,  8, 50,  8),
    ('V-bit 8 mm 90 deg',    8, 'mm',  90, 0.2, 2,  5, 50,  8),
    ('V-bit 10 mm 60 deg',  10, 'mm',  60, 0.2, 2, 10, 55,  8),
    ('V-bit 10 mm 90 deg',  10, 'mm',  90, 0.2, 2,  6, 55,  8),
    ('V-bit 12 mm 30 deg',  12, 'mm',  30, 0.2, 2, 23, 65,  8),
    ('V-bit 12 mm 45 deg',  12, 'mm',  45, 0.2, 2, 15, 60,  8),
    ('V-bit 12 mm 60 deg',  12, 'mm',  60, 0.2, 2, 11, 55,  8),
    ('V-bit 12 mm 90 deg',  12, 'mm',  90, 0.2, 2,  7, 50,  8),
    ('V-bit 12 mm 120 deg', 12, 'mm', 120, 0.2, 2,  5, 50,  8),
    ('V-bit 16 mm 60 deg',  16, 'mm',  60, 0.2, 2, 15, 60,  8),
    ('V-bit 16 mm 90 deg',  16, 'mm',  90, 0.2, 2,  9, 55,  8),
    ('V-bit 20 mm 90 deg',  20, 'mm',  90, 0.2, 2, 11, 60, 12),
    ('V-bit 20 mm 120 deg', 20, 'mm', 120, 0.2, 2,  8, 55, 12),
    ('V-bit 25 mm 90 deg',  25, 'mm',  90, 0.2, 2, 14, 65, 12),
    ('V-bit 25 mm 120 deg', 25, 'mm', 120, 0.2, 2,  9, 60, 12),
    ('V-bit 32 mm 90 deg',  32, 'mm',  90, 0.2, 2, 18, 70, 12);

-- Inch sizes
INSERT INTO V_BIT (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length, Overall_Length,
    Shank_Diameter) VALUES
    ('V-bit 1/4 in 30 deg',     0.25, 'in',  30, 0.005, 2,    0.5,    2, 0.25),
    ('V-bit 1/4 in 60 deg',     0.25, 'in',  60, 0.005, 2,   0.25,    2, 0.25),
    ('V-bit 1/4 in 90 deg',     0.25, 'in',  90, 0.005, 2, 0.1875,    2, 0.25),
    ('V-bit 3/8 in 60 deg',    0.375, 'in',  60, 0.005, 2,  0.375,    2, 0.25),
    ('V-bit 3/8 in 90 deg',    0.375, 'in',  90, 0.005, 2,   0.25,    2, 0.25),
    ('V-bit 1/2 in 30 deg',      0.5, 'in',  30, 0.005, 2,      1,  2.5, 0.25),
    ('V-bit 1/2 in 60 deg',      0.5, 'in',  60, 0.005, 2,    0.5,    2, 0.25),
    ('V-bit 1/2 in 90 deg',      0.5, 'in',  90, 0.005, 2,  0.375,    2, 0.25),
    ('V-bit 1/2 in 120 deg',     0.5, 'in', 120, 0.005, 2,   0.25,    2, 0.25),
    ('V-bit 3/4 in 60 deg',     0.75, 'in',  60, 0.005, 2,   0.75,  2.5,  0.5),
    ('V-bit 3/4 in 90 deg',     0.75, 'in',  90, 0.005, 2,    0.5,  2.5,  0.5),
    ('V-bit 1 in 60 deg',          1, 'in',  60, 0.005, 2,      1, 2.75,  0.5),
    ('V-bit 1 in 90 deg',          1, 'in',  90, 0.005, 2,  0.625,  2.5,  0.5),
    ('V-bit 1-1/4 in 90 deg',   1.25, 'in',  90, 0.005, 2,   0.75,  2.5,  0.5),
    ('V-bit 1-1/2 in 120 deg',   1.5, 'in', 120, 0.005, 2, 0.5625,  2.5,  0.5);

UPDATE V_BIT SET Standard = 'Common series';
-- Small ones are of solid carbide, larger ones have brazed edges.
UPDATE V_BIT SET Material = (SELECT ID FROM TOOL_MATERIAL WHERE Name = 'Solid carbide') WHERE Diameter = Shank_Diameter;
UPDATE V_BIT SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);

-- Engraving cutters with a single lip, ground from the shank.

CREATE TABLE ENGRAVING_CUTTER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 6,
    Unit TEXT(2) DEFAULT 'mm',
    Point_Angle DOUBLE DEFAULT 30,
    Tip_Diameter DOUBLE DEFAULT 0.2,
    "Flutes_#" SHORT DEFAULT 1,
    Flute_Length DOUBLE DEFAULT 12,
    Overall_Length DOUBLE DEFAULT 50,
    Shank_Diameter DOUBLE DEFAULT 6,
    Standard TEXT(40),
    Material LONG DEFAULT 5,
    Coating LONG DEFAULT 1,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX ENGRAVING_CUTTER_Name ON ENGRAVING_CUTTER (Name COLLATE NOCASE);

CREATE VIEW Q_ENGRAVING_CUTTER AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Point_Angle AS Point_Angle,
       T.Tip_Diameter AS Tip_Diameter,
       T."Flutes_#" AS "Flutes_#",
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM ENGRAVING_CUTTER AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO ENGRAVING_CUTTER (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Engraving cutter 3 mm 20 deg tip 0.1', 3, 'mm', 20, 0.1, 1,   9, 38, 3),
    ('Engraving cutter 3 mm 30 deg tip 0.1', 3, 'mm', 30, 0.1, 1,   6, 38, 3),
    ('Engraving cutter 3 mm 30 deg tip 0.2', 3, 'mm', 30, 0.2, 1,   6, 38, 3),
    ('Engraving cutter 3 mm 45 deg tip 0.1', 3, 'mm', 45, 0.1, 1,   4, 38, 3),
    ('Engraving cutter 3 mm 60 deg tip 0.1', 3, 'mm', 60, 0.1, 1,   3, 38, 3),
    ('Engraving cutter 3 mm 90 deg tip 0.1', 3, 'mm', 90, 0.1, 1,   2, 38, 3),
    ('Engraving cutter 4 mm 20 deg tip 0.1', 4, 'mm', 20, 0.1, 1,  12, 45, 4),
    ('Engraving cutter 4 mm 30 deg tip 0.1', 4, 'mm', 30, 0.1, 1,   8, 45, 4),
    ('Engraving cutter 4 mm 30 deg tip 0.3', 4, 'mm', 30, 0.3, 1,   8, 45, 4),
    ('Engraving cutter 4 mm 60 deg tip 0.2', 4, 'mm', 60, 0.2, 1,   4, 45, 4),
    ('Engraving cutter 4 mm 90 deg tip 0.2', 4, 'mm', 90, 0.2, 1, 2.5, 45, 4),
    ('Engraving cutter 6 mm 20 deg tip 0.2', 6, 'mm', 20, 0.2, 1,  18, 50, 6),
    ('Engraving cutter 6 mm 30 deg tip 0.1', 6, 'mm', 30, 0.1, 1,  12, 50, 6),
    ('Engraving cutter 6 mm 30 deg tip 0.2', 6, 'mm', 30, 0.2, 1,  12, 50, 6),
    ('Engraving cutter 6 mm 30 deg tip 0.5', 6, 'mm', 30, 0.5, 1,  12, 50, 6),
    ('Engraving cutter 6 mm 45 deg tip 0.2', 6, 'mm', 45, 0.2, 1,   8, 50, 6),
    ('Engraving cutter 6 mm 60 deg tip 0.2', 6, 'mm', 60, 0.2, 1,   6, 50, 6),
    ('Engraving cutter 6 mm 90 deg tip 0.2', 6, 'mm', 90, 0.2, 1,   4, 50, 6);

-- Inch sizes
INSERT INTO ENGRAVING_CUTTER (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Engraving cutter 1/8 in 20 deg tip 0.005',   0.125, 'in', 20, 0.005, 1,  0.375, 1.5,  0.125),
    ('Engraving cutter 1/8 in 30 deg tip 0.005',   0.125, 'in', 30, 0.005, 1,   0.25, 1.5,  0.125),
    ('Engraving cutter 1/8 in 30 deg tip 0.01',    0.125, 'in', 30,  0.01, 1,   0.25, 1.5,  0.125),
    ('Engraving cutter 1/8 in 45 deg tip 0.005',   0.125, 'in', 45, 0.005, 1, 0.1875, 1.5,  0.125),
    ('Engraving cutter 1/8 in 60 deg tip 0.005',   0.125, 'in', 60, 0.005, 1,  0.125, 1.5,  0.125),
    ('Engraving cutter 1/8 in 90 deg tip 0.005',   0.125, 'in', 90, 0.005, 1, 0.0625, 1.5,  0.125),
    ('Engraving cutter 3/16 in 30 deg tip 0.005', 0.1875, 'in', 30, 0.005, 1,  0.375,   2, 0.1875),
    ('Engraving cutter 3/16 in 60 deg tip 0.005', 0.1875, 'in', 60, 0.005, 1, 0.1875,   2, 0.1875),
    ('Engraving cutter 1/4 in 20 deg tip 0.01',     0.25, 'in', 20,  0.01, 1, 0.6875,   2,   0.25),
    ('Engraving cutter 1/4 in 30 deg tip 0.005',    0.25, 'in', 30, 0.005, 1,    0.5,   2,   0.25),
    ('Engraving cutter 1/4 in 30 deg tip 0.02',     0.25, 'in', 30,  0.02, 1,    0.5,   2,   0.25),
    ('Engraving cutter 1/4 in 60 deg tip 0.01',     0.25, 'in', 60,  0.01, 1,   0.25,   2,   0.25),
    ('Engraving cutter 1/4 in 90 deg tip 0.01',     0.25, 'in', 90,  0.01, 1,  0.125,   2,   0.25);

UPDATE ENGRAVING_CUTTER SET Standard = 'Common series';
UPDATE ENGRAVING_CUTTER SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
