-- Flat end mills. Lengths and diameters are in the unit of the row.

CREATE TABLE FLAT_END_MILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    "Flutes_#" SHORT DEFAULT 4,
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
CREATE INDEX FLAT_END_MILL_Name ON FLAT_END_MILL (Name COLLATE NOCASE);

CREATE VIEW Q_FLAT_END_MILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T."Flutes_#" AS "Flutes_#",
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
FROM FLAT_END_MILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- High-speed steel, four flutes, short series
INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('End mill 2 mm 4 flutes HSS',   2, 'mm', 4,  7,  51,  6, 'DIN 844'),
    ('End mill 3 mm 4 flutes HSS',   3, 'mm', 4,  8,  52,  6, 'DIN 844'),
    ('End mill 4 mm 4 flutes HSS',   4, 'mm', 4, 11,  55,  6, 'DIN 844'),
    ('End mill 5 mm 4 flutes HSS',   5, 'mm', 4, 13,  57,  6, 'DIN 844'),
    ('End mill 6 mm 4 flutes HSS',   6, 'mm', 4, 13,  57,  6, 'DIN 844'),
    ('End mill 8 mm 4 flutes HSS',   8, 'mm', 4, 19,  69, 10, 'DIN 844'),
    ('End mill 10 mm 4 flutes HSS', 10, 'mm', 4, 22,  72, 10, 'DIN 844'),
    ('End mill 12 mm 4 flutes HSS', 12, 'mm', 4, 26,  83, 12, 'DIN 844'),
    ('End mill 14 mm 4 flutes HSS', 14, 'mm', 4, 26,  83, 12, 'DIN 844'),
    ('End mill 16 mm 4 flutes HSS', 16, 'mm', 4, 32,  92, 16, 'DIN 844'),
    ('End mill 18 mm 4 flutes HSS', 18, 'mm', 4, 32,  92, 16, 'DIN 844'),
    ('End mill 20 mm 4 flutes HSS', 20, 'mm', 4, 38, 104, 20, 'DIN 844'),
    ('End mill 22 mm 4 flutes HSS', 22, 'mm', 4, 38, 104, 20, 'DIN 844'),
    ('End mill 25 mm 4 flutes HSS', 25, 'mm', 4, 45, 121, 25, 'DIN 844');

-- Carbide miniature end mills on a 4 mm shank
INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('End mill 1 mm 2 flutes carbide',     1, 'mm', 2,   3, 50, 4, 'Miniature series'),
    ('End mill 1.5 mm 2 flutes carbide', 1.5, 'mm', 2, 4.5, 50, 4, 'Miniature series'),
    ('End mill 2 mm 2 flutes carbide',     2, 'mm', 2,   6, 50, 4, 'Miniature series'),
    ('End mill 2.5 mm 2 flutes carbide', 2.5, 'mm', 2,   7, 50, 4, 'Miniature series');

-- Solid carbide, four flutes, long series
INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('End mill 3 mm 4 flutes carbide',   3, 'mm', 4,  8,  57,  6, 'DIN 6527 L'),
    ('End mill 4 mm 4 flutes carbide',   4, 'mm', 4, 11,  57,  6, 'DIN 6527 L'),
    ('End mill 5 mm 4 flutes carbide',   5, 'mm', 4, 13,  57,  6, 'DIN 6527 L'),
    ('End mill 6 mm 4 flutes carbide',   6, 'mm', 4, 13,  57,  6, 'DIN 6527 L'),
    ('End mill 8 mm 4 flutes carbide',   8, 'mm', 4, 19,  63,  8, 'DIN 6527 L'),
    ('End mill 10 mm 4 flutes carbide', 10, 'mm', 4, 22,  72, 10, 'DIN 6527 L'),
    ('End mill 12 mm 4 flutes carbide', 12, 'mm', 4, 26,  83, 12, 'DIN 6527 L'),
    ('End mill 14 mm 4 flutes carbide', 14, 'mm', 4, 26,  83, 14, 'DIN 6527 L'),
    ('End mill 16 mm 4 flutes carbide', 16, 'mm', 4, 32,  92, 16, 'DIN 6527 L'),
    ('End mill 18 mm 4 flutes carbide', 18, 'mm', 4, 32,  92, 18, 'DIN 6527 L'),
    ('End mill 20 mm 4 flutes carbide', 20, 'mm', 4, 38, 104, 20, 'DIN 6527 L');

-- Solid carbide, three flutes, steep helix for aluminium
INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('End mill 3 mm 3 flutes aluminium',   3, 'mm', 3,  8,  57,  6, 'DIN 6527 L'),
    ('End mill 4 mm 3 flutes aluminium',   4, 'mm', 3, 11,  57,  6, 'DIN 6527 L'),
    ('End mill 5 mm 3 flutes aluminium',   5, 'mm', 3, 13,  57,  6, 'DIN 6527 L'),
    ('End mill 6 mm 3 flutes aluminium',   6, 'mm', 3, 13,  57,  6, 'DIN 6527 L'),
    ('End mill 8 mm 3 flutes aluminium',   8, 'mm', 3, 19,  63,  8, 'DIN 6527 L'),
    ('End mill 10 mm 3 flutes aluminium', 10, 'mm', 3, 22,  72, 10, 'DIN 6527 L'),
    ('End mill 12 mm 3 flutes aluminium', 12, 'mm', 3, 26,  83, 12, 'DIN 6527 L'),
    ('End mill 16 mm 3 flutes aluminium', 16, 'mm', 3, 32,  92, 16, 'DIN 6527 L'),
    ('End mill 20 mm 3 flutes aluminium', 20, 'mm', 3, 38, 104, 20, 'DIN 6527 L');

-- Inch sizes, solid carbide, four flutes
INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('End mill 1/16 in 4 flutes carbide',  0.0625, 'in', 4, 0.1875,  1.5,  0.125, 'Miniature series'),
    ('End mill 3/32 in 4 flutes carbide', 0.09375, 'in', 4,  0.375,  1.5,  0.125, 'Common series'),
    ('End mill 1/8 in 4 flutes carbide',    0.125, 'in', 4,    0.5,  1.5,  0.125, 'Common series'),
    ('End mill 5/32 in 4 flutes carbide', 0.15625, 'in', 4, 0.5625,    2, 0.1875, 'Common series'),
    ('End mill 3/16 in 4 flutes carbide',  0.1875, 'in', 4,  0.625,    2, 0.1875, 'Common series'),
    ('End mill 7/32 in 4 flutes carbide', 0.21875, 'in', 4,  0.625,  2.5,   0.25, 'Common series'),
    ('End mill 1/4 in 4 flutes carbide',     0.25, 'in', 4,   0.75,  2.5,   0.25, 'Common series'),
    ('End mill 5/16 in 4 flutes carbide',  0.3125, 'in', 4, 0.8125,  2.5, 0.3125, 'Common series'),
    ('End mill 3/8 in 4 flutes carbide',    0.375, 'in', 4,      1,  2.5,  0.375, 'Common series'),
    ('End mill 7/16 in 4 flutes carbide',  0.4375, 'in', 4,      1, 2.75, 0.4375, 'Common series'),
    ('End mill 1/2 in 4 flutes carbide',      0.5, 'in', 4,      1,    3,    0.5, 'Common series'),
    ('End mill 9/16 in 4 flutes carbide',  0.5625, 'in', 4,  1.125,  3.5, 0.5625, 'Common series'),
    ('End mill 5/8 in 4 flutes carbide',    0.625, 'in', 4,   1.25,  3.5,  0.625, 'Common series'),
    ('End mill 3/4 in 4 flutes carbide',     0.75, 'in', 4,    1.5,    4,   0.75, 'Common series'),
    ('End mill 7/8 in 4 flutes carbide',    0.875, 'in', 4,    1.5,    4,  0.875, 'Common series'),
    ('End mill 1 in 4 flutes carbide',          1, 'in', 4,    1.5,    4,      1, 'Common series');

-- Inch sizes, high-speed steel, two flutes for keyways, single end, regular length
INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, "Flutes_#", Flute_Length, Overall_Length, Shank_Diameter,
    Standard) VALUES
    ('End mill 1/8 in 2 flutes HSS',   0.125, 'in', 2,  0.375, 2.3125, 0.375, 'ASME B94.19'),
    ('End mill 3/16 in 2 flutes HSS', 0.1875, 'in', 2, 0.4375, 2.3125, 0.375, 'ASME B94.19'),
    ('End mill 1/4 in 2 flutes HSS',    0.25, 'in', 2,    0.5, 2.3125, 0.375, 'ASME B94.19'),
    ('End mill 5/16 in 2 flutes HSS', 0.3125, 'in', 2, 0.5625, 2.3125, 0.375, 'ASME B94.19'),
    ('End mill 3/8 in 2 flutes HSS',   0.375, 'in', 2, 0.5625, 2.3125, 0.375, 'ASME B94.19'),
    ('End mill 1/2 in 2 flutes HSS',     0.5, 'in', 2,      1,      3,   0.5, 'ASME B94.19'),
    ('End mill 5/8 in 2 flutes HSS',   0.625, 'in', 2, 1.3125, 3.4375, 0.625, 'ASME B94.19'),
    ('End mill 3/4 in 2 flutes HSS',    0.75, 'in', 2, 1.3125, 3.5625,  0.75, 'ASME B94.19'),
    ('End mill 1 in 2 flutes HSS',         1, 'in', 2,  1.625,  4.125,     1, 'ASME B94.19');

UPDATE FLAT_END_MILL SET Material = (SELECT ID FROM TOOL_MATERIAL WHERE Name = 'HSS-Co8')
WHERE Name LIKE '% HSS';
UPDATE FLAT_END_MILL SET Material = (SELECT ID FROM TOOL_MATERIAL WHERE Name = 'Solid carbide')
WHERE Name NOT LIKE '% HSS';
UPDATE FLAT_END_MILL SET Coating = (SELECT ID FROM COATING WHERE Name = 'TiAlN')
WHERE Name LIKE '% carbide';
UPDATE FLAT_END_MILL SET Coating = (SELECT ID FROM COATING WHERE Name = 'ZrN')
WHERE Name LIKE '% aluminium';
UPDATE FLAT_END_MILL SET Helix_Angle = 45, Comment = 'Polished flutes, for aluminium and plastics'
WHERE Name LIKE '% aluminium';
UPDATE FLAT_END_MILL SET Center_Cutting = 0 WHERE Standard = 'DIN 844';
UPDATE FLAT_END_MILL SET IsFavorite = -1 WHERE "Flutes_#" = 4 AND Diameter IN (6, 10, 0.25, 0.5);
UPDATE FLAT_END_MILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
