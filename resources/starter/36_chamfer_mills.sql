-- Chamfer mills. Point_Angle is the included angle in degrees; lengths and diameters are in the unit of the row.

CREATE TABLE CHAMFER_MILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    Point_Angle DOUBLE DEFAULT 90,
    Tip_Diameter DOUBLE DEFAULT 0.2,
    "Flutes_#" SHORT DEFAULT 4,
    Flute_Length DOUBLE DEFAULT 22,
    Overall_Length DOUBLE DEFAULT 72,
    Shank_Diameter DOUBLE DEFAULT 10,
    Standard TEXT(40),
    Material LONG DEFAULT 5,
    Coating LONG DEFAULT 5,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX CHAMFER_MILL_Name ON CHAMFER_MILL (Name COLLATE NOCASE);

CREATE VIEW Q_CHAMFER_MILL AS
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
FROM CHAMFER_MILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes, 60 degrees
INSERT INTO CHAMFER_MILL (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Chamfer mill 4 mm 60 deg',   4, 'mm', 60, 0.1, 4, 11, 54,  6),
    ('Chamfer mill 6 mm 60 deg',   6, 'mm', 60, 0.2, 4, 13, 57,  6),
    ('Chamfer mill 8 mm 60 deg',   8, 'mm', 60, 0.2, 4, 19, 63,  8),
    ('Chamfer mill 10 mm 60 deg', 10, 'mm', 60, 0.2, 4, 22, 72, 10),
    ('Chamfer mill 12 mm 60 deg', 12, 'mm', 60, 0.2, 4, 26, 83, 12),
    ('Chamfer mill 16 mm 60 deg', 16, 'mm', 60, 0.4, 4, 32, 92, 16);

-- Metric sizes, 90 degrees
INSERT INTO CHAMFER_MILL (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Chamfer mill 3 mm 90 deg',   3, 'mm', 90, 0.1, 2,  8,  50,  6),
    ('Chamfer mill 4 mm 90 deg',   4, 'mm', 90, 0.1, 4, 11,  54,  6),
    ('Chamfer mill 5 mm 90 deg',   5, 'mm', 90, 0.2, 4, 13,  54,  6),
    ('Chamfer mill 6 mm 90 deg',   6, 'mm', 90, 0.2, 4, 13,  57,  6),
    ('Chamfer mill 8 mm 90 deg',   8, 'mm', 90, 0.2, 4, 19,  63,  8),
    ('Chamfer mill 10 mm 90 deg', 10, 'mm', 90, 0.2, 4, 22,  72, 10),
    ('Chamfer mill 12 mm 90 deg', 12, 'mm', 90, 0.2, 4, 26,  83, 12),
    ('Chamfer mill 16 mm 90 deg', 16, 'mm', 90, 0.4, 4, 32,  92, 16),
    ('Chamfer mill 20 mm 90 deg', 20, 'mm', 90, 0.5, 6, 38, 104, 20);

-- Metric sizes, 120 degrees
INSERT INTO CHAMFER_MILL (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Chamfer mill 4 mm 120 deg',   4, 'mm', 120, 0.1, 4, 11, 54,  6),
    ('Chamfer mill 6 mm 120 deg',   6, 'mm', 120, 0.2, 4, 13, 57,  6),
    ('Chamfer mill 8 mm 120 deg',   8, 'mm', 120, 0.2, 4, 19, 63,  8),
    ('Chamfer mill 10 mm 120 deg', 10, 'mm', 120, 0.2, 4, 22, 72, 10),
    ('Chamfer mill 12 mm 120 deg', 12, 'mm', 120, 0.2, 4, 26, 83, 12),
    ('Chamfer mill 16 mm 120 deg', 16, 'mm', 120, 0.4, 4, 32, 92, 16);

-- Inch sizes, 60 degrees
INSERT INTO CHAMFER_MILL (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Chamfer mill 1/4 in 60 deg',  0.25, 'in', 60,  0.01, 4, 0.75, 2.5,  0.25),
    ('Chamfer mill 3/8 in 60 deg', 0.375, 'in', 60,  0.01, 4,    1, 2.5, 0.375),
    ('Chamfer mill 1/2 in 60 deg',   0.5, 'in', 60, 0.015, 4,    1,   3,   0.5);

-- Inch sizes, 82 degrees
INSERT INTO CHAMFER_MILL (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Chamfer mill 1/4 in 82 deg',  0.25, 'in', 82,  0.01, 4, 0.75, 2.5,  0.25),
    ('Chamfer mill 3/8 in 82 deg', 0.375, 'in', 82,  0.01, 4,    1, 2.5, 0.375),
    ('Chamfer mill 1/2 in 82 deg',   0.5, 'in', 82, 0.015, 4,    1,   3,   0.5);

-- Inch sizes, 90 degrees
INSERT INTO CHAMFER_MILL (Name, Diameter, Unit, Point_Angle, Tip_Diameter, "Flutes_#", Flute_Length,
    Overall_Length, Shank_Diameter) VALUES
    ('Chamfer mill 1/8 in 90 deg',   0.125, 'in', 90, 0.005, 2,   0.5, 1.5,  0.125),
    ('Chamfer mill 3/16 in 90 deg', 0.1875, 'in', 90, 0.008, 2, 0.625,   2, 0.1875),
    ('Chamfer mill 1/4 in 90 deg',    0.25, 'in', 90,  0.01, 4,  0.75, 2.5,   0.25),
    ('Chamfer mill 3/8 in 90 deg',   0.375, 'in', 90,  0.01, 4,     1, 2.5,  0.375),
    ('Chamfer mill 1/2 in 90 deg',     0.5, 'in', 90, 0.015, 4,     1,   3,    0.5),
    ('Chamfer mill 5/8 in 90 deg',   0.625, 'in', 90, 0.015, 4,  1.25, 3.5,  0.625),
    ('Chamfer mill 3/4 in 90 deg',    0.75, 'in', 90,  0.02, 6,   1.5,   4,   0.75);

UPDATE CHAMFER_MILL SET Standard = 'Common series';
UPDATE CHAMFER_MILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
