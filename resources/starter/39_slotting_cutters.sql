-- Slitting saws. Width is the width of the slot; lengths and diameters are in the unit of the row.

CREATE TABLE SLITTING_SAW (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 100,
    Unit TEXT(2) DEFAULT 'mm',
    Width DOUBLE DEFAULT 2,
    "Teeth_#" SHORT DEFAULT 64,
    Bore_Diameter DOUBLE DEFAULT 22,
    Standard TEXT(40),
    Material LONG DEFAULT 1,
    Coating LONG DEFAULT 1,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX SLITTING_SAW_Name ON SLITTING_SAW (Name COLLATE NOCASE);

CREATE VIEW Q_SLITTING_SAW AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Width AS Width,
       T."Teeth_#" AS "Teeth_#",
       T.Bore_Diameter AS Bore_Diameter,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM SLITTING_SAW AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes, fine teeth
INSERT INTO SLITTING_SAW (Name, Diameter, Unit, Width, "Teeth_#", Bore_Diameter, Standard) VALUES
    ('Slitting saw 50 x 0.5 mm',   50, 'mm', 0.5, 128, 13, 'DIN 1837 A'),
    ('Slitting saw 50 x 0.8 mm',   50, 'mm', 0.8, 100, 13, 'DIN 1837 A'),
    ('Slitting saw 50 x 1 mm',     50, 'mm',   1, 100, 13, 'DIN 1837 A'),
    ('Slitting saw 50 x 1.6 mm',   50, 'mm', 1.6,  80, 13, 'DIN 1837 A'),
    ('Slitting saw 50 x 2 mm',     50, 'mm',   2,  80, 13, 'DIN 1837 A'),
    ('Slitting saw 50 x 3 mm',     50, 'mm',   3,  64, 13, 'DIN 1837 A'),
    ('Slitting saw 63 x 0.5 mm',   63, 'mm', 0.5, 128, 16, 'DIN 1837 A'),
    ('Slitting saw 63 x 1 mm',     63, 'mm',   1, 100, 16, 'DIN 1837 A'),
    ('Slitting saw 63 x 1.6 mm',   63, 'mm', 1.6, 100, 16, 'DIN 1837 A'),
    ('Slitting saw 63 x 2 mm',     63, 'mm',   2,  80, 16, 'DIN 1837 A'),
    ('Slitting saw 63 x 3 mm',     63, 'mm',   3,  80, 16, 'DIN 1837 A'),
    ('Slitting saw 80 x 1 mm',     80, 'mm',   1, 128, 22, 'DIN 1837 A'),
    ('Slitting saw 80 x 1.6 mm',   80, 'mm', 1.6, 100, 22, 'DIN 1837 A'),
    ('Slitting saw 80 x 2 mm',     80, 'mm',   2, 100, 22, 'DIN 1837 A'),
    ('Slitting saw 80 x 3 mm',     80, 'mm',   3,  80, 22, 'DIN 1837 A'),
    ('Slitting saw 80 x 4 mm',     80, 'mm',   4,  80, 22, 'DIN 1837 A'),
    ('Slitting saw 100 x 1 mm',   100, 'mm',   1, 160, 22, 'DIN 1837 A'),
    ('Slitting saw 100 x 1.6 mm', 100, 'mm', 1.6, 128, 22, 'DIN 1837 A'),
    ('Slitting saw 100 x 2 mm',   100, 'mm',   2, 128, 22, 'DIN 1837 A'),
    ('Slitting saw 100 x 2.5 mm', 100, 'mm', 2.5, 100, 22, 'DIN 1837 A'),
    ('Slitting saw 100 x 3 mm',   100, 'mm',   3, 100, 22, 'DIN 1837 A'),
    ('Slitting saw 100 x 4 mm',   100, 'mm',   4, 100, 22, 'DIN 1837 A'),
    ('Slitting saw 125 x 1.6 mm', 125, 'mm', 1.6, 160, 22, 'DIN 1837 A'),
    ('Slitting saw 125 x 2 mm',   125, 'mm',   2, 128, 22, 'DIN 1837 A'),
    ('Slitting saw 125 x 3 mm',   125, 'mm',   3, 128, 22, 'DIN 1837 A'),
    ('Slitting saw 125 x 4 mm',   125, 'mm',   4, 100, 22, 'DIN 1837 A'),
    ('Slitting saw 160 x 2 mm',   160, 'mm',   2, 160, 32, 'DIN 1837 A'),
    ('Slitting saw 160 x 3 mm',   160, 'mm',   3, 128, 32, 'DIN 1837 A'),
    ('Slitting saw 160 x 4 mm',   160, 'mm',   4, 128, 32, 'DIN 1837 A'),
    ('Slitting saw 160 x 5 mm',   160, 'mm',   5, 100, 32, 'DIN 1837 A');

-- Inch sizes, plain. The standard gives diameters, widths and bores; one coarse tooth count for each diameter is usual.
INSERT INTO SLITTING_SAW (Name, Diameter, Unit, Width, "Teeth_#", Bore_Diameter, Standard) VALUES
    ('Slitting saw 2-1/2 x 1/32 in', 2.5, 'in',  0.03125, 28, 0.875, 'ASME B94.19'),
    ('Slitting saw 2-1/2 x 3/64 in', 2.5, 'in', 0.046875, 28, 0.875, 'ASME B94.19'),
    ('Slitting saw 2-1/2 x 1/16 in', 2.5, 'in',   0.0625, 28, 0.875, 'ASME B94.19'),
    ('Slitting saw 2-1/2 x 3/32 in', 2.5, 'in',  0.09375, 28, 0.875, 'ASME B94.19'),
    ('Slitting saw 2-1/2 x 1/8 in',  2.5, 'in',    0.125, 28, 0.875, 'ASME B94.19'),
    ('Slitting saw 3 x 1/32 in',       3, 'in',  0.03125, 30,     1, 'ASME B94.19'),
    ('Slitting saw 3 x 3/64 in',       3, 'in', 0.046875, 30,     1, 'ASME B94.19'),
    ('Slitting saw 3 x 1/16 in',       3, 'in',   0.0625, 30,     1, 'ASME B94.19'),
    ('Slitting saw 3 x 3/32 in',       3, 'in',  0.09375, 30,     1, 'ASME B94.19'),
    ('Slitting saw 3 x 1/8 in',        3, 'in',    0.125, 30,     1, 'ASME B94.19'),
    ('Slitting saw 3 x 5/32 in',       3, 'in',  0.15625, 30,     1, 'ASME B94.19'),
    ('Slitting saw 4 x 1/32 in',       4, 'in',  0.03125, 34,     1, 'ASME B94.19'),
    ('Slitting saw 4 x 1/16 in',       4, 'in',   0.0625, 34,     1, 'ASME B94.19'),
    ('Slitting saw 4 x 3/32 in',       4, 'in',  0.09375, 34,     1, 'ASME B94.19'),
    ('Slitting saw 4 x 1/8 in',        4, 'in',    0.125, 34,     1, 'ASME B94.19'),
    ('Slitting saw 4 x 3/16 in',       4, 'in',   0.1875, 34,     1, 'ASME B94.19'),
    ('Slitting saw 5 x 1/16 in',       5, 'in',   0.0625, 38,     1, 'ASME B94.19'),
    ('Slitting saw 5 x 3/32 in',       5, 'in',  0.09375, 38,     1, 'ASME B94.19'),
    ('Slitting saw 5 x 1/8 in',        5, 'in',    0.125, 38,     1, 'ASME B94.19'),
    ('Slitting saw 6 x 1/16 in',       6, 'in',   0.0625, 42,     1, 'ASME B94.19'),
    ('Slitting saw 6 x 1/8 in',        6, 'in',    0.125, 42,     1, 'ASME B94.19'),
    ('Slitting saw 6 x 3/16 in',       6, 'in',   0.1875, 42,  1.25, 'ASME B94.19');

UPDATE SLITTING_SAW SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'saw arbor'
      AND abs(SLITTING_SAW.Bore_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END - Metric_Min_Shank) < 0.01
    ORDER BY ID LIMIT 1);

-- Woodruff keyseat cutters. Key_Size names the key that fits the seat.
-- Lengths and diameters are in the unit of the row.

CREATE TABLE WOODRUFF_CUTTER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 19.5,
    Unit TEXT(2) DEFAULT 'mm',
    Width DOUBLE DEFAULT 5,
    "Teeth_#" SHORT DEFAULT 8,
    Overall_Length DOUBLE DEFAULT 63,
    Shank_Diameter DOUBLE DEFAULT 10,
    Key_Size TEXT(20),
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
CREATE INDEX WOODRUFF_CUTTER_Name ON WOODRUFF_CUTTER (Name COLLATE NOCASE);

CREATE VIEW Q_WOODRUFF_CUTTER AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Width AS Width,
       T."Teeth_#" AS "Teeth_#",
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Key_Size AS Key_Size,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM WOODRUFF_CUTTER AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO WOODRUFF_CUTTER (Name, Diameter, Unit, Width, "Teeth_#", Overall_Length, Shank_Diameter,
    Key_Size, Standard) VALUES
    ('Woodruff cutter 4.5 x 1 mm',     4.5, 'mm',   1,  6, 50,  6, '1 x 1.4',   'DIN 850'),
    ('Woodruff cutter 7.5 x 1.5 mm',   7.5, 'mm', 1.5,  6, 50,  6, '1.5 x 2.6', 'DIN 850'),
    ('Woodruff cutter 7.5 x 2 mm',     7.5, 'mm',   2,  6, 50,  6, '2 x 2.6',   'DIN 850'),
    ('Woodruff cutter 10.5 x 2 mm',   10.5, 'mm',   2,  8, 50,  6, '2 x 3.7',   'DIN 850'),
    ('Woodruff cutter 10.5 x 2.5 mm', 10.5, 'mm', 2.5,  8, 50,  6, '2.5 x 3.7', 'DIN 850'),
    ('Woodruff cutter 10.5 x 3 mm',   10.5, 'mm',   3,  8, 50,  6, '3 x 3.7',   'DIN 850'),
    ('Woodruff cutter 13.5 x 3 mm',   13.5, 'mm',   3,  8, 56, 10, '3 x 5',     'DIN 850'),
    ('Woodruff cutter 16.5 x 3 mm',   16.5, 'mm',   3,  8, 56, 10, '3 x 6.5',   'DIN 850'),
    ('Woodruff cutter 13.5 x 4 mm',   13.5, 'mm',   4,  8, 56, 10, '4 x 5',     'DIN 850'),
    ('Woodruff cutter 16.5 x 4 mm',   16.5, 'mm',   4,  8, 56, 10, '4 x 6.5',   'DIN 850'),
    ('Woodruff cutter 19.5 x 4 mm',   19.5, 'mm',   4,  8, 63, 10, '4 x 7.5',   'DIN 850'),
    ('Woodruff cutter 16.5 x 5 mm',   16.5, 'mm',   5,  8, 56, 10, '5 x 6.5',   'DIN 850'),
    ('Woodruff cutter 19.5 x 5 mm',   19.5, 'mm',   5,  8, 63, 10, '5 x 7.5',   'DIN 850'),
    ('Woodruff cutter 22.5 x 5 mm',   22.5, 'mm',   5,  8, 63, 10, '5 x 9',     'DIN 850'),
    ('Woodruff cutter 22.5 x 6 mm',   22.5, 'mm',   6,  8, 63, 10, '6 x 9',     'DIN 850'),
    ('Woodruff cutter 25.5 x 6 mm',   25.5, 'mm',   6, 10, 63, 10, '6 x 10',    'DIN 850'),
    ('Woodruff cutter 28.5 x 8 mm',   28.5, 'mm',   8, 10, 63, 10, '8 x 11',    'DIN 850'),
    ('Woodruff cutter 32.5 x 10 mm',  32.5, 'mm',  10, 10, 71, 12, '10 x 13',   'DIN 850');

-- Inch sizes by key number
INSERT INTO WOODRUFF_CUTTER (Name, Diameter, Unit, Width, "Teeth_#", Overall_Length, Shank_Diameter,
    Key_Size, Standard) VALUES
    ('Woodruff cutter no. 202',  0.25, 'in',  0.0625,  6,  2.0625, 0.5, 'No. 202', 'ASME B94.19'),
    ('Woodruff cutter no. 203', 0.375, 'in',  0.0625,  6,  2.0625, 0.5, 'No. 203', 'ASME B94.19'),
    ('Woodruff cutter no. 303', 0.375, 'in', 0.09375,  6, 2.09375, 0.5, 'No. 303', 'ASME B94.19'),
    ('Woodruff cutter no. 204',   0.5, 'in',  0.0625,  8,  2.0625, 0.5, 'No. 204', 'ASME B94.19'),
    ('Woodruff cutter no. 304',   0.5, 'in', 0.09375,  8, 2.09375, 0.5, 'No. 304', 'ASME B94.19'),
    ('Woodruff cutter no. 404',   0.5, 'in',   0.125,  8,   2.125, 0.5, 'No. 404', 'ASME B94.19'),
    ('Woodruff cutter no. 305', 0.625, 'in', 0.09375,  8, 2.09375, 0.5, 'No. 305', 'ASME B94.19'),
    ('Woodruff cutter no. 405', 0.625, 'in',   0.125,  8,   2.125, 0.5, 'No. 405', 'ASME B94.19'),
    ('Woodruff cutter no. 505', 0.625, 'in', 0.15625,  8, 2.15625, 0.5, 'No. 505', 'ASME B94.19'),
    ('Woodruff cutter no. 406',  0.75, 'in',   0.125,  8,   2.125, 0.5, 'No. 406', 'ASME B94.19'),
    ('Woodruff cutter no. 506',  0.75, 'in', 0.15625,  8, 2.15625, 0.5, 'No. 506', 'ASME B94.19'),
    ('Woodruff cutter no. 606',  0.75, 'in',  0.1875,  8,  2.1875, 0.5, 'No. 606', 'ASME B94.19'),
    ('Woodruff cutter no. 507', 0.875, 'in', 0.15625,  8, 2.15625, 0.5, 'No. 507', 'ASME B94.19'),
    ('Woodruff cutter no. 607', 0.875, 'in',  0.1875,  8,  2.1875, 0.5, 'No. 607', 'ASME B94.19'),
    ('Woodruff cutter no. 807', 0.875, 'in',    0.25,  8,    2.25, 0.5, 'No. 807', 'ASME B94.19'),
    ('Woodruff cutter no. 608',     1, 'in',  0.1875, 10,  2.1875, 0.5, 'No. 608', 'ASME B94.19'),
    ('Woodruff cutter no. 808',     1, 'in',    0.25, 10,    2.25, 0.5, 'No. 808', 'ASME B94.19'),
    ('Woodruff cutter no. 810',  1.25, 'in',    0.25, 10,    2.25, 0.5, 'No. 810', 'ASME B94.19'),
    ('Woodruff cutter no. 812',   1.5, 'in',    0.25, 10,    2.25, 0.5, 'No. 812', 'ASME B94.19');

UPDATE WOODRUFF_CUTTER SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);

-- Dovetail cutters. Dovetail_Angle is the angle between flank and bottom, in degrees.
-- Lengths and diameters are in the unit of the row.

CREATE TABLE DOVETAIL_CUTTER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 20,
    Unit TEXT(2) DEFAULT 'mm',
    Dovetail_Angle DOUBLE DEFAULT 60,
    Cutting_Height DOUBLE DEFAULT 8,
    "Teeth_#" SHORT DEFAULT 8,
    Overall_Length DOUBLE DEFAULT 63,
    Shank_Diameter DOUBLE DEFAULT 12,
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
CREATE INDEX DOVETAIL_CUTTER_Name ON DOVETAIL_CUTTER (Name COLLATE NOCASE);

CREATE VIEW Q_DOVETAIL_CUTTER AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Dovetail_Angle AS Dovetail_Angle,
       T.Cutting_Height AS Cutting_Height,
       T."Teeth_#" AS "Teeth_#",
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
FROM DOVETAIL_CUTTER AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO DOVETAIL_CUTTER (Name, Diameter, Unit, Dovetail_Angle, Cutting_Height, "Teeth_#",
    Overall_Length, Shank_Diameter, Standard) VALUES
    ('Dovetail cutter 12 mm 45 deg', 12, 'mm', 45,  3.5,  6, 54, 10, 'DIN 1833 C'),
    ('Dovetail cutter 16 mm 45 deg', 16, 'mm', 45,    4,  8, 60, 12, 'DIN 1833 C'),
    ('Dovetail cutter 20 mm 45 deg', 20, 'mm', 45,    5,  8, 63, 12, 'DIN 1833 C'),
    ('Dovetail cutter 25 mm 45 deg', 25, 'mm', 45,  6.3, 10, 67, 12, 'DIN 1833 C'),
    ('Dovetail cutter 32 mm 45 deg', 32, 'mm', 45,    8, 12, 71, 16, 'DIN 1833 C'),
    ('Dovetail cutter 12 mm 60 deg', 12, 'mm', 60,    5,  6, 54, 10, 'DIN 1833 C'),
    ('Dovetail cutter 16 mm 60 deg', 16, 'mm', 60,  6.3,  8, 60, 12, 'DIN 1833 C'),
    ('Dovetail cutter 20 mm 60 deg', 20, 'mm', 60,    8,  8, 63, 12, 'DIN 1833 C'),
    ('Dovetail cutter 25 mm 60 deg', 25, 'mm', 60,   10, 10, 67, 12, 'DIN 1833 C'),
    ('Dovetail cutter 32 mm 60 deg', 32, 'mm', 60, 12.5, 12, 71, 16, 'DIN 1833 C');

-- Inch sizes
INSERT INTO DOVETAIL_CUTTER (Name, Diameter, Unit, Dovetail_Angle, Cutting_Height, "Teeth_#",
    Overall_Length, Shank_Diameter, Standard) VALUES
    ('Dovetail cutter 3/8 in 45 deg',   0.375, 'in', 45, 0.0938,  6,  2.125, 0.375, 'Common series'),
    ('Dovetail cutter 1/2 in 45 deg',     0.5, 'in', 45, 0.1406,  6,   2.25, 0.375, 'Common series'),
    ('Dovetail cutter 3/4 in 45 deg',    0.75, 'in', 45, 0.2344,  8, 2.4375, 0.375, 'Common series'),
    ('Dovetail cutter 1 in 45 deg',         1, 'in', 45, 0.2812, 10,  2.625,   0.5, 'Common series'),
    ('Dovetail cutter 1-3/8 in 45 deg', 1.375, 'in', 45,  0.375, 12,  2.875, 0.625, 'Common series'),
    ('Dovetail cutter 3/8 in 60 deg',   0.375, 'in', 60,  0.125,  6,  2.125, 0.375, 'Common series'),
    ('Dovetail cutter 1/2 in 60 deg',     0.5, 'in', 60, 0.1875,  6,   2.25, 0.375, 'Common series'),
    ('Dovetail cutter 3/4 in 60 deg',    0.75, 'in', 60, 0.3125,  8, 2.4375, 0.375, 'Common series'),
    ('Dovetail cutter 1 in 60 deg',         1, 'in', 60,  0.375, 10,  2.625,   0.5, 'Common series'),
    ('Dovetail cutter 1-3/8 in 60 deg', 1.375, 'in', 60,    0.5, 12,  2.875, 0.625, 'Common series');

UPDATE DOVETAIL_CUTTER SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
