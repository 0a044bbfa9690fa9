-- Bull-nose end mills: flat end mills with a corner radius. Corner_Radius is in the unit of the row.

CREATE TABLE BULL_NOSE_END_MILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    "Flutes_#" SHORT DEFAULT 4,
    Corner_Radius DOUBLE DEFAULT 1,
    Flute_Length DOUBLE DEFAULT 22,
    Overall_Length DOUBLE DEFAULT 72,
    Shank_Diameter DOUBLE DEFAULT 10,
    Helix_Angle DOUBLE DEFAULT 30,
    Center_Cutting BOOLEAN DEFAULT -1,
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
CREATE INDEX BULL_NOSE_END_MILL_Name ON BULL_NOSE_END_MILL (Name COLLATE NOCASE);

CREATE VIEW Q_BULL_NOSE_END_MILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T."Flutes_#" AS "Flutes_#",
       T.Corner_Radius AS Corner_Radius,
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Helix_Angle AS Helix_Angle,
       T.Center_Cutting AS Center_Cutting,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM BULL_NOSE_END_MILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes, solid carbide, four flutes
INSERT INTO BULL_NOSE_END_MILL (Name, Diameter, Unit, "Flutes_#", Corner_Radius, Flute_Length,
    Overall_Length, Shank_Diameter, Standard) VALUES
    ('Bull mill 3 mm R0.3',   3, 'mm', 4, 0.3,  8,  57,  6, 'DIN 6527 L'),
    ('Bull mill 4 mm R0.3',   4, 'mm', 4, 0.3, 11,  57,  6, 'DIN 6527 L'),
    ('Bull mill 4 mm R0.5',   4, 'mm', 4, 0.5, 11,  57,  6, 'DIN 6527 L'),
    ('Bull mill 5 mm R0.5',   5, 'mm', 4, 0.5, 13,  57,  6, 'DIN 6527 L'),
    ('Bull mill 6 mm R0.5',   6, 'mm', 4, 0.5, 13,  57,  6, 'DIN 6527 L'),
    ('Bull mill 6 mm R1',     6, 'mm', 4,   1, 13,  57,  6, 'DIN 6527 L'),
    ('Bull mill 8 mm R0.5',   8, 'mm', 4, 0.5, 19,  63,  8, 'DIN 6527 L'),
    ('Bull mill 8 mm R1',     8, 'mm', 4,   1, 19,  63,  8, 'DIN 6527 L'),
    ('Bull mill 8 mm R2',     8, 'mm', 4,   2, 19,  63,  8, 'DIN 6527 L'),
    ('Bull mill 10 mm R0.5', 10, 'mm', 4, 0.5, 22,  72, 10, 'DIN 6527 L'),
    ('Bull mill 10 mm R1',   10, 'mm', 4,   1, 22,  72, 10, 'DIN 6527 L'),
    ('Bull mill 10 mm R2',   10, 'mm', 4,   2, 22,  72, 10, 'DIN 6527 L'),
    ('Bull mill 12 mm R1',   12, 'mm', 4,   1, 26,  83, 12, 'DIN 6527 L'),
    ('Bull mill 12 mm R2',   12, 'mm', 4,   2, 26,  83, 12, 'DIN 6527 L'),
    ('Bull mill 12 mm R3',   12, 'mm', 4,   3, 26,  83, 12, 'DIN 6527 L'),
    ('Bull mill 16 mm R1',   16, 'mm', 4,   1, 32,  92, 16, 'DIN 6527 L'),
    ('Bull mill 16 mm R2',   16, 'mm', 4,   2, 32,  92, 16, 'DIN 6527 L'),
    ('Bull mill 16 mm R3',   16, 'mm', 4,   3, 32,  92, 16, 'DIN 6527 L'),
    ('Bull mill 20 mm R1',   20, 'mm', 4,   1, 38, 104, 20, 'DIN 6527 L'),
    ('Bull mill 20 mm R3',   20, 'mm', 4,   3, 38, 104, 20, 'DIN 6527 L'),
    ('Bull mill 20 mm R4',   20, 'mm', 4,   4, 38, 104, 20, 'DIN 6527 L');

-- Inch sizes, solid carbide, four flutes
INSERT INTO BULL_NOSE_END_MILL (Name, Diameter, Unit, "Flutes_#", Corner_Radius, Flute_Length,
    Overall_Length, Shank_Diameter, Standard) VALUES
    ('Bull mill 1/8 in R0.01',    0.125, 'in', 4,  0.01,    0.5, 1.5,  0.125, 'Common series'),
    ('Bull mill 1/8 in R0.015',   0.125, 'in', 4, 0.015,    0.5, 1.5,  0.125, 'Common series'),
    ('Bull mill 3/16 in R0.015', 0.1875, 'in', 4, 0.015,  0.625,   2, 0.1875, 'Common series'),
    ('Bull mill 3/16 in R0.03',  0.1875, 'in', 4,  0.03,  0.625,   2, 0.1875, 'Common series'),
    ('Bull mill 1/4 in R0.015',    0.25, 'in', 4, 0.015,   0.75, 2.5,   0.25, 'Common series'),
    ('Bull mill 1/4 in R0.03',     0.25, 'in', 4,  0.03,   0.75, 2.5,   0.25, 'Common series'),
    ('Bull mill 1/4 in R0.06',     0.25, 'in', 4,  0.06,   0.75, 2.5,   0.25, 'Common series'),
    ('Bull mill 5/16 in R0.03',  0.3125, 'in', 4,  0.03, 0.8125, 2.5, 0.3125, 'Common series'),
    ('Bull mill 3/8 in R0.03',    0.375, 'in', 4,  0.03,      1, 2.5,  0.375, 'Common series'),
    ('Bull mill 3/8 in R0.06',    0.375, 'in', 4,  0.06,      1, 2.5,  0.375, 'Common series'),
    ('Bull mill 1/2 in R0.03',      0.5, 'in', 4,  0.03,      1,   3,    0.5, 'Common series'),
    ('Bull mill 1/2 in R0.06',      0.5, 'in', 4,  0.06,      1,   3,    0.5, 'Common series'),
    ('Bull mill 1/2 in R0.12',      0.5, 'in', 4,  0.12,      1,   3,    0.5, 'Common series'),
    ('Bull mill 5/8 in R0.03',    0.625, 'in', 4,  0.03,   1.25, 3.5,  0.625, 'Common series'),
    ('Bull mill 5/8 in R0.06',    0.625, 'in', 4,  0.06,   1.25, 3.5,  0.625, 'Common series'),
    ('Bull mill 3/4 in R0.06',     0.75, 'in', 4,  0.06,    1.5,   4,   0.75, 'Common series'),
    ('Bull mill 3/4 in R0.12',     0.75, 'in', 4,  0.12,    1.5,   4,   0.75, 'Common series'),
    ('Bull mill 1 in R0.06',          1, 'in', 4,  0.06,    1.5,   4,      1, 'Common series'),
    ('Bull mill 1 in R0.12',          1, 'in', 4,  0.12,    1.5,   4,      1, 'Common series');

UPDATE BULL_NOSE_END_MILL SET Material = (SELECT ID FROM TOOL_MATERIAL WHERE Name = 'Solid carbide');
UPDATE BULL_NOSE_END_MILL SET Coating = (SELECT ID FROM COATING WHERE Name = 'TiAlN');
UPDATE BULL_NOSE_END_MILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
