-- Ball-nose end mills. Ball_Radius is half the diameter, in the unit of the row.

CREATE TABLE BALL_END_MILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    "Flutes_#" SHORT DEFAULT 4,
    Ball_Radius DOUBLE DEFAULT 5,
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
CREATE INDEX BALL_END_MILL_Name ON BALL_END_MILL (Name COLLATE NOCASE);

CREATE VIEW Q_BALL_END_MILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T."Flutes_#" AS "Flutes_#",
       T.Ball_Radius AS Ball_Radius,
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
FROM BALL_END_MILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Solid carbide, two flutes
INSERT INTO BALL_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('Ball mill 0.6 mm 2 flutes carbide', 0.6, 'mm', 2, 1.2,  50,  4, 'Miniature series'),
    ('Ball mill 0.8 mm 2 flutes carbide', 0.8, 'mm', 2, 1.6,  50,  4, 'Miniature series'),
    ('Ball mill 1 mm 2 flutes carbide',     1, 'mm', 2,   2,  50,  4, 'Miniature series'),
    ('Ball mill 1.5 mm 2 flutes carbide', 1.5, 'mm', 2,   3,  50,  4, 'Miniature series'),
    ('Ball mill 2 mm 2 flutes carbide',     2, 'mm', 2,   6,  57,  6, 'DIN 6527 L'),
    ('Ball mill 2.5 mm 2 flutes carbide', 2.5, 'mm', 2,   7,  57,  6, 'DIN 6527 L'),
    ('Ball mill 3 mm 2 flutes carbide',     3, 'mm', 2,   7,  57,  6, 'DIN 6527 L'),
    ('Ball mill 4 mm 2 flutes carbide',     4, 'mm', 2,   8,  57,  6, 'DIN 6527 L'),
    ('Ball mill 5 mm 2 flutes carbide',     5, 'mm', 2,  10,  57,  6, 'DIN 6527 L'),
    ('Ball mill 6 mm 2 flutes carbide',     6, 'mm', 2,  10,  57,  6, 'DIN 6527 L'),
    ('Ball mill 8 mm 2 flutes carbide',     8, 'mm', 2,  16,  63,  8, 'DIN 6527 L'),
    ('Ball mill 10 mm 2 flutes carbide',   10, 'mm', 2,  19,  72, 10, 'DIN 6527 L'),
    ('Ball mill 12 mm 2 flutes carbide',   12, 'mm', 2,  22,  83, 12, 'DIN 6527 L'),
    ('Ball mill 14 mm 2 flutes carbide',   14, 'mm', 2,  22,  83, 14, 'DIN 6527 L'),
    ('Ball mill 16 mm 2 flutes carbide',   16, 'mm', 2,  26,  92, 16, 'DIN 6527 L'),
    ('Ball mill 20 mm 2 flutes carbide',   20, 'mm', 2,  32, 104, 20, 'DIN 6527 L');

-- Solid carbide, four flutes, for finishing
INSERT INTO BALL_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('Ball mill 6 mm 4 flutes carbide',   6, 'mm', 4, 13,  57,  6, 'DIN 6527 L'),
    ('Ball mill 8 mm 4 flutes carbide',   8, 'mm', 4, 19,  63,  8, 'DIN 6527 L'),
    ('Ball mill 10 mm 4 flutes carbide', 10, 'mm', 4, 22,  72, 10, 'DIN 6527 L'),
    ('Ball mill 12 mm 4 flutes carbide', 12, 'mm', 4, 26,  83, 12, 'DIN 6527 L'),
    ('Ball mill 16 mm 4 flutes carbide', 16, 'mm', 4, 32,  92, 16, 'DIN 6527 L'),
    ('Ball mill 20 mm 4 flutes carbide', 20, 'mm', 4, 38, 104, 20, 'DIN 6527 L');

-- Inch sizes, solid carbide
INSERT INTO BALL_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('Ball mill 1/16 in 2 flutes carbide',  0.0625, 'in', 2, 0.1875,  1.5,  0.125, 'Miniature series'),
    ('Ball mill 3/32 in 2 flutes carbide', 0.09375, 'in', 2,  0.375,  1.5,  0.125, 'Common series'),
    ('Ball mill 1/8 in 2 flutes carbide',    0.125, 'in', 2,    0.5,  1.5,  0.125, 'Common series'),
    ('Ball mill 3/16 in 2 flutes carbide',  0.1875, 'in', 2,  0.625,    2, 0.1875, 'Common series'),
    ('Ball mill 1/4 in 2 flutes carbide',     0.25, 'in', 2,   0.75,  2.5,   0.25, 'Common series'),
    ('Ball mill 5/16 in 2 flutes carbide',  0.3125, 'in', 2, 0.8125,  2.5, 0.3125, 'Common series'),
    ('Ball mill 3/8 in 2 flutes carbide',    0.375, 'in', 2,      1,  2.5,  0.375, 'Common series'),
    ('Ball mill 7/16 in 2 flutes carbide',  0.4375, 'in', 2,      1, 2.75, 0.4375, 'Common series'),
    ('Ball mill 1/2 in 2 flutes carbide',      0.5, 'in', 2,      1,    3,    0.5, 'Common series'),
    ('Ball mill 5/8 in 2 flutes carbide',    0.625, 'in', 2,   1.25,  3.5,  0.625, 'Common series'),
    ('Ball mill 3/4 in 2 flutes carbide',     0.75, 'in', 2,    1.5,    4,   0.75, 'Common series'),
    ('Ball mill 1 in 2 flutes carbide',          1, 'in', 2,    1.5,    4,      1, 'Common series');

UPDATE BALL_END_MILL SET Ball_Radius = Diameter / 2;
UPDATE BALL_END_MILL SET Material = (SELECT ID FROM TOOL_MATERIAL WHERE Name = 'Solid carbide');
UPDATE BALL_END_MILL SET Coating = (SELECT ID FROM COATING WHERE Name = 'AlTiN');
UPDATE BALL_END_MILL SET IsFavorite = -1 WHERE "Flutes_#" = 2 AND Diameter IN (6, 10, 0.25, 0.5);
UPDATE BALL_END_MILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
