-- Face mills with clamped inserts, on shell mill arbors. Lead_Angle is the angle of the edge to the face, in degrees;
-- Cutting_Height is the deepest cut. Lengths and diameters are in the unit of the row.

CREATE TABLE FACE_MILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 80,
    Unit TEXT(2) DEFAULT 'mm',
    "Inserts_#" SHORT DEFAULT 6,
    Lead_Angle DOUBLE DEFAULT 45,
    Cutting_Height DOUBLE DEFAULT 6,
    Height DOUBLE DEFAULT 50,
    Bore_Diameter DOUBLE DEFAULT 27,
    Standard TEXT(40),
    Material LONG DEFAULT 7,
    Coating LONG DEFAULT 5,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX FACE_MILL_Name ON FACE_MILL (Name COLLATE NOCASE);

CREATE VIEW Q_FACE_MILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T."Inserts_#" AS "Inserts_#",
       T.Lead_Angle AS Lead_Angle,
       T.Cutting_Height AS Cutting_Height,
       T.Height AS Height,
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
FROM FACE_MILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes, 45 degrees
INSERT INTO FACE_MILL (Name, Diameter, Unit, "Inserts_#", Lead_Angle, Cutting_Height, Height, Bore_Diameter) VALUES
    ('Face mill 40 mm 45 deg Z4',    40, 'mm',  4, 45, 6, 40, 16),
    ('Face mill 40 mm 45 deg Z5',    40, 'mm',  5, 45, 6, 40, 16),
    ('Face mill 50 mm 45 deg Z4',    50, 'mm',  4, 45, 6, 40, 22),
    ('Face mill 50 mm 45 deg Z5',    50, 'mm',  5, 45, 6, 40, 22),
    ('Face mill 63 mm 45 deg Z5',    63, 'mm',  5, 45, 6, 40, 22),
    ('Face mill 63 mm 45 deg Z6',    63, 'mm',  6, 45, 6, 40, 22),
    ('Face mill 80 mm 45 deg Z6',    80, 'mm',  6, 45, 6, 50, 27),
    ('Face mill 80 mm 45 deg Z8',    80, 'mm',  8, 45, 6, 50, 27),
    ('Face mill 100 mm 45 deg Z7',  100, 'mm',  7, 45, 6, 50, 32),
    ('Face mill 100 mm 45 deg Z10', 100, 'mm', 10, 45, 6, 50, 32),
    ('Face mill 125 mm 45 deg Z8',  125, 'mm',  8, 45, 6, 63, 40),
    ('Face mill 125 mm 45 deg Z12', 125, 'mm', 12, 45, 6, 63, 40),
    ('Face mill 160 mm 45 deg Z10', 160, 'mm', 10, 45, 6, 63, 40),
    ('Face mill 160 mm 45 deg Z14', 160, 'mm', 14, 45, 6, 63, 40),
    ('Face mill 200 mm 45 deg Z12', 200, 'mm', 12, 45, 6, 63, 60),
    ('Face mill 200 mm 45 deg Z18', 200, 'mm', 18, 45, 6, 63, 60),
    ('Face mill 250 mm 45 deg Z14', 250, 'mm', 14, 45, 6, 63, 60),
    ('Face mill 250 mm 45 deg Z22', 250, 'mm', 22, 45, 6, 63, 60);

-- Metric sizes, 90 degrees
INSERT INTO FACE_MILL (Name, Diameter, Unit, "Inserts_#", Lead_Angle, Cutting_Height, Height, Bore_Diameter) VALUES
    ('Face mill 40 mm 90 deg Z4',    40, 'mm',  4, 90, 10, 40, 16),
    ('Face mill 50 mm 90 deg Z4',    50, 'mm',  4, 90, 10, 40, 22),
    ('Face mill 63 mm 90 deg Z5',    63, 'mm',  5, 90, 10, 40, 22),
    ('Face mill 80 mm 90 deg Z6',    80, 'mm',  6, 90, 10, 50, 27),
    ('Face mill 100 mm 90 deg Z7',  100, 'mm',  7, 90, 10, 50, 32),
    ('Face mill 125 mm 90 deg Z8',  125, 'mm',  8, 90, 10, 63, 40),
    ('Face mill 160 mm 90 deg Z10', 160, 'mm', 10, 90, 10, 63, 40),
    ('Face mill 200 mm 90 deg Z12', 200, 'mm', 12, 90, 10, 63, 60),
    ('Face mill 250 mm 90 deg Z14', 250, 'mm', 14, 90, 10, 63, 60);

-- Inch sizes
INSERT INTO FACE_MILL (Name, Diameter, Unit, "Inserts_#", Lead_Angle, Cutting_Height, Height, Bore_Diameter) VALUES
    ('Face mill 2 in 45 deg Z4',       2, 'in',  4, 45, 0.25,  1.75, 0.75),
    ('Face mill 2-1/2 in 45 deg Z5', 2.5, 'in',  5, 45, 0.25,  1.75, 0.75),
    ('Face mill 3 in 45 deg Z6',       3, 'in',  6, 45, 0.25,     2,    1),
    ('Face mill 4 in 45 deg Z7',       4, 'in',  7, 45, 0.25,     2,  1.5),
    ('Face mill 5 in 45 deg Z8',       5, 'in',  8, 45, 0.25, 2.375,  1.5),
    ('Face mill 6 in 45 deg Z10',      6, 'in', 10, 45, 0.25, 2.375,  1.5),
    ('Face mill 8 in 45 deg Z12',      8, 'in', 12, 45, 0.25, 2.375,  2.5),
    ('Face mill 2 in 90 deg Z4',       2, 'in',  4, 90,  0.4,  1.75, 0.75),
    ('Face mill 2-1/2 in 90 deg Z5', 2.5, 'in',  5, 90,  0.4,  1.75, 0.75),
    ('Face mill 3 in 90 deg Z6',       3, 'in',  6, 90,  0.4,     2,    1),
    ('Face mill 4 in 90 deg Z7',       4, 'in',  7, 90,  0.4,     2,  1.5),
    ('Face mill 5 in 90 deg Z8',       5, 'in',  8, 90,  0.4, 2.375,  1.5),
    ('Face mill 6 in 90 deg Z10',      6, 'in', 10, 90,  0.4, 2.375,  1.5),
    ('Face mill 8 in 90 deg Z12',      8, 'in', 12, 90,  0.4, 2.375,  2.5);

UPDATE FACE_MILL SET Standard = 'ISO 6462' WHERE Unit = 'mm';
UPDATE FACE_MILL SET Standard = 'Common series' WHERE Unit = 'in';
UPDATE FACE_MILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'shell arbor'
      AND abs(FACE_MILL.Bore_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END - Metric_Min_Shank) < 0.01
    ORDER BY ID LIMIT 1);
