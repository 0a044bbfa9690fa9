-- Countersinks. Diameter is the largest countersink, Min_Diameter the smallest hole; Point_Angle is in degrees,
-- lengths and diameters are in the unit of the row.

CREATE TABLE COUNTERSINK (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10.4,
    Unit TEXT(2) DEFAULT 'mm',
    Point_Angle DOUBLE DEFAULT 90,
    Min_Diameter DOUBLE DEFAULT 2.5,
    "Flutes_#" SHORT DEFAULT 3,
    Overall_Length DOUBLE DEFAULT 50,
    Shank_Diameter DOUBLE DEFAULT 6,
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
CREATE INDEX COUNTERSINK_Name ON COUNTERSINK (Name COLLATE NOCASE);

CREATE VIEW Q_COUNTERSINK AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Point_Angle AS Point_Angle,
       T.Min_Diameter AS Min_Diameter,
       T."Flutes_#" AS "Flutes_#",
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
FROM COUNTERSINK AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes, 90 degrees
INSERT INTO COUNTERSINK (Name, Diameter, Unit, Point_Angle, Min_Diameter, "Flutes_#", Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Countersink 4.3 mm 90 deg',   4.3, 'mm', 90, 1.3, 3, 40,  4, 'DIN 335 C'),
    ('Countersink 5 mm 90 deg',       5, 'mm', 90, 1.5, 3, 40,  4, 'DIN 335 C'),
    ('Countersink 6 mm 90 deg',       6, 'mm', 90, 1.5, 3, 45,  5, 'DIN 335 C'),
    ('Countersink 6.3 mm 90 deg',   6.3, 'mm', 90, 1.5, 3, 45,  5, 'DIN 335 C'),
    ('Countersink 7 mm 90 deg',       7, 'mm', 90, 1.8, 3, 50,  6, 'DIN 335 C'),
    ('Countersink 8 mm 90 deg',       8, 'mm', 90,   2, 3, 50,  6, 'DIN 335 C'),
    ('Countersink 8.3 mm 90 deg',   8.3, 'mm', 90,   2, 3, 50,  6, 'DIN 335 C'),
    ('Countersink 10 mm 90 deg',     10, 'mm', 90, 2.5, 3, 50,  6, 'DIN 335 C'),
    ('Countersink 10.4 mm 90 deg', 10.4, 'mm', 90, 2.5, 3, 50,  6, 'DIN 335 C'),
    ('Countersink 11.5 mm 90 deg', 11.5, 'mm', 90, 2.8, 3, 56,  8, 'DIN 335 C'),
    ('Countersink 12.4 mm 90 deg', 12.4, 'mm', 90, 2.8, 3, 56,  8, 'DIN 335 C'),
    ('Countersink 15 mm 90 deg',     15, 'mm', 90, 3.2, 3, 60, 10, 'DIN 335 C'),
    ('Countersink 16.5 mm 90 deg', 16.5, 'mm', 90, 3.2, 3, 60, 10, 'DIN 335 C'),
    ('Countersink 19 mm 90 deg',     19, 'mm', 90, 3.5, 3, 63, 10, 'DIN 335 C'),
    ('Countersink 20.5 mm 90 deg', 20.5, 'mm', 90, 3.5, 3, 63, 10, 'DIN 335 C'),
    ('Countersink 23 mm 90 deg',     23, 'mm', 90, 3.8, 3, 67, 10, 'DIN 335 C'),
    ('Countersink 25 mm 90 deg',     25, 'mm', 90, 3.8, 3, 67, 10, 'DIN 335 C'),
    ('Countersink 28 mm 90 deg',     28, 'mm', 90,   4, 3, 71, 12, 'DIN 335 C'),
    ('Countersink 31 mm 90 deg',     31, 'mm', 90, 4.2, 3, 71, 12, 'DIN 335 C');

-- Metric sizes, 60 degrees
INSERT INTO COUNTERSINK (Name, Diameter, Unit, Point_Angle, Min_Diameter, "Flutes_#", Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Countersink 6.3 mm 60 deg',   6.3, 'mm', 60, 1.6, 3, 45,  5, 'DIN 334 C'),
    ('Countersink 8 mm 60 deg',       8, 'mm', 60,   2, 3, 50,  6, 'DIN 334 C'),
    ('Countersink 10 mm 60 deg',     10, 'mm', 60, 2.5, 3, 50,  6, 'DIN 334 C'),
    ('Countersink 12.5 mm 60 deg', 12.5, 'mm', 60, 3.2, 3, 56,  8, 'DIN 334 C'),
    ('Countersink 16 mm 60 deg',     16, 'mm', 60,   4, 3, 63, 10, 'DIN 334 C'),
    ('Countersink 20 mm 60 deg',     20, 'mm', 60,   5, 3, 67, 10, 'DIN 334 C'),
    ('Countersink 25 mm 60 deg',     25, 'mm', 60, 6.3, 3, 71, 10, 'DIN 334 C');

-- Inch sizes, 60 degrees
INSERT INTO COUNTERSINK (Name, Diameter, Unit, Point_Angle, Min_Diameter, "Flutes_#", Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Countersink 1/4 in 60 deg', 0.25, 'in', 60, 0.06, 3,  1.75, 0.25, 'Common series'),
    ('Countersink 1/2 in 60 deg',  0.5, 'in', 60,  0.1, 3,     2, 0.25, 'Common series'),
    ('Countersink 3/4 in 60 deg', 0.75, 'in', 60, 0.14, 3, 2.625,  0.5, 'Common series');

-- Inch sizes, 82 degrees
INSERT INTO COUNTERSINK (Name, Diameter, Unit, Point_Angle, Min_Diameter, "Flutes_#", Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Countersink 1/4 in 82 deg',  0.25, 'in', 82, 0.06, 3,  1.75,  0.25, 'Common series'),
    ('Countersink 3/8 in 82 deg', 0.375, 'in', 82, 0.08, 3,     2,  0.25, 'Common series'),
    ('Countersink 1/2 in 82 deg',   0.5, 'in', 82,  0.1, 3,     2,  0.25, 'Common series'),
    ('Countersink 5/8 in 82 deg', 0.625, 'in', 82, 0.13, 3,  2.25, 0.375, 'Common series'),
    ('Countersink 3/4 in 82 deg',  0.75, 'in', 82, 0.14, 3, 2.625,   0.5, 'Common series'),
    ('Countersink 1 in 82 deg',       1, 'in', 82, 0.16, 3,  2.75,   0.5, 'Common series');

-- Inch sizes, 90 degrees
INSERT INTO COUNTERSINK (Name, Diameter, Unit, Point_Angle, Min_Diameter, "Flutes_#", Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Countersink 1/4 in 90 deg',  0.25, 'in', 90, 0.06, 3,  1.75,  0.25, 'Common series'),
    ('Countersink 3/8 in 90 deg', 0.375, 'in', 90, 0.08, 3,     2,  0.25, 'Common series'),
    ('Countersink 1/2 in 90 deg',   0.5, 'in', 90,  0.1, 3,     2,  0.25, 'Common series'),
    ('Countersink 5/8 in 90 deg', 0.625, 'in', 90, 0.13, 3,  2.25, 0.375, 'Common series'),
    ('Countersink 3/4 in 90 deg',  0.75, 'in', 90, 0.14, 3, 2.625,   0.5, 'Common series'),
    ('Countersink 1 in 90 deg',       1, 'in', 90, 0.16, 3,  2.75,   0.5, 'Common series');

-- Inch sizes, 100 degrees
INSERT INTO COUNTERSINK (Name, Diameter, Unit, Point_Angle, Min_Diameter, "Flutes_#", Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Countersink 1/4 in 100 deg', 0.25, 'in', 100, 0.06, 3,  1.75, 0.25, 'Common series'),
    ('Countersink 1/2 in 100 deg',  0.5, 'in', 100,  0.1, 3,     2, 0.25, 'Common series'),
    ('Countersink 3/4 in 100 deg', 0.75, 'in', 100, 0.14, 3, 2.625,  0.5, 'Common series');

UPDATE COUNTERSINK SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);

-- Counterbores with a solid pilot, for socket head screws. Pilot_Kind tells what hole the pilot runs in.
-- Lengths and diameters are in the unit of the row.

CREATE TABLE COUNTERBORE (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Screw_Size TEXT(20),
    Diameter DOUBLE DEFAULT 11,
    Pilot_Diameter DOUBLE DEFAULT 6.6,
    Unit TEXT(2) DEFAULT 'mm',
    Pilot_Kind TEXT(20) DEFAULT 'Clearance hole',
    "Flutes_#" SHORT DEFAULT 3,
    Overall_Length DOUBLE DEFAULT 80,
    Shank_Diameter DOUBLE DEFAULT 8,
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
CREATE INDEX COUNTERBORE_Name ON COUNTERBORE (Name COLLATE NOCASE);

CREATE VIEW Q_COUNTERBORE AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Screw_Size AS Screw_Size,
       T.Diameter AS Diameter,
       T.Pilot_Diameter AS Pilot_Diameter,
       T.Unit AS Unit,
       T.Pilot_Kind AS Pilot_Kind,
       T."Flutes_#" AS "Flutes_#",
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
FROM COUNTERBORE AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric screws
INSERT INTO COUNTERBORE (Name, Screw_Size, Diameter, Pilot_Diameter, Unit, Pilot_Kind, Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Counterbore M3 clearance',  'M3',  6.5,  3.4, 'mm', 'Clearance hole',  71,    5, 'DIN 373'),
    ('Counterbore M4 clearance',  'M4',    8,  4.5, 'mm', 'Clearance hole',  71,    5, 'DIN 373'),
    ('Counterbore M5 clearance',  'M5',   10,  5.5, 'mm', 'Clearance hole',  80,    8, 'DIN 373'),
    ('Counterbore M6 clearance',  'M6',   11,  6.6, 'mm', 'Clearance hole',  80,    8, 'DIN 373'),
    ('Counterbore M8 clearance',  'M8',   15,    9, 'mm', 'Clearance hole', 100, 12.5, 'DIN 373'),
    ('Counterbore M10 clearance', 'M10',  18,   11, 'mm', 'Clearance hole', 100, 12.5, 'DIN 373'),
    ('Counterbore M12 clearance', 'M12',  20, 13.5, 'mm', 'Clearance hole', 100, 12.5, 'DIN 373'),
    ('Counterbore M3 close',      'M3',  6.5,  3.2, 'mm', 'Close hole',      71,    5, 'DIN 373'),
    ('Counterbore M4 close',      'M4',    8,  4.3, 'mm', 'Close hole',      71,    5, 'DIN 373'),
    ('Counterbore M5 close',      'M5',   10,  5.3, 'mm', 'Close hole',      80,    8, 'DIN 373'),
    ('Counterbore M6 close',      'M6',   11,  6.4, 'mm', 'Close hole',      80,    8, 'DIN 373'),
    ('Counterbore M8 close',      'M8',   15,  8.4, 'mm', 'Close hole',     100, 12.5, 'DIN 373'),
    ('Counterbore M10 close',     'M10',  18, 10.5, 'mm', 'Close hole',     100, 12.5, 'DIN 373'),
    ('Counterbore M12 close',     'M12',  20,   13, 'mm', 'Close hole',     100, 12.5, 'DIN 373'),
    ('Counterbore M3 tap drill',  'M3',  6.5,  2.5, 'mm', 'Tap drill hole',  71,    5, 'DIN 373'),
    ('Counterbore M4 tap drill',  'M4',    8,  3.3, 'mm', 'Tap drill hole',  71,    5, 'DIN 373'),
    ('Counterbore M5 tap drill',  'M5',   10,  4.2, 'mm', 'Tap drill hole',  80,    8, 'DIN 373'),
    ('Counterbore M6 tap drill',  'M6',   11,    5, 'mm', 'Tap drill hole',  80,    8, 'DIN 373'),
    ('Counterbore M8 tap drill',  'M8',   15,  6.8, 'mm', 'Tap drill hole', 100, 12.5, 'DIN 373'),
    ('Counterbore M10 tap drill', 'M10',  18,  8.5, 'mm', 'Tap drill hole', 100, 12.5, 'DIN 373'),
    ('Counterbore M12 tap drill', 'M12',  20, 10.2, 'mm', 'Tap drill hole', 100, 12.5, 'DIN 373');

-- Inch screws
INSERT INTO COUNTERBORE (Name, Screw_Size, Diameter, Pilot_Diameter, Unit, Pilot_Kind, Overall_Length,
    Shank_Diameter, Standard) VALUES
    ('Counterbore #4 screw',      '#4',   0.21875,    0.125, 'in', 'Clearance hole', 3.5, 0.1875, 'Common series'),
    ('Counterbore #5 screw',      '#5',      0.25, 0.140625, 'in', 'Clearance hole', 3.5,   0.25, 'Common series'),
    ('Counterbore #6 screw',      '#6',   0.28125,  0.15625, 'in', 'Clearance hole',   4,   0.25, 'Common series'),
    ('Counterbore #8 screw',      '#8',    0.3125,   0.1875, 'in', 'Clearance hole',   4, 0.3125, 'Common series'),
    ('Counterbore #10 screw',     '#10',    0.375,  0.21875, 'in', 'Clearance hole', 4.5,  0.375, 'Common series'),
    ('Counterbore 1/4 in screw',  '1/4',   0.4375,  0.28125, 'in', 'Clearance hole',   5,  0.375, 'Common series'),
    ('Counterbore 5/16 in screw', '5/16', 0.53125,  0.34375, 'in', 'Clearance hole', 5.5,    0.5, 'Common series'),
    ('Counterbore 3/8 in screw',  '3/8',    0.625,  0.40625, 'in', 'Clearance hole',   6,    0.5, 'Common series'),
    ('Counterbore 7/16 in screw', '7/16', 0.71875,  0.46875, 'in', 'Clearance hole', 6.5,    0.5, 'Common series'),
    ('Counterbore 1/2 in screw',  '1/2',   0.8125,  0.53125, 'in', 'Clearance hole',   7,    0.5, 'Common series'),
    ('Counterbore 5/8 in screw',  '5/8',        1,  0.65625, 'in', 'Clearance hole', 7.5,   0.75, 'Common series'),
    ('Counterbore 3/4 in screw',  '3/4',   1.1875,  0.78125, 'in', 'Clearance hole',   8,   0.75, 'Common series');

UPDATE COUNTERBORE SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
