-- Single-flute router bits. Cut_Direction tells where the helix takes the chips: 'Upcut' out of the cut, 'Downcut' into
-- it, for a clean upper edge. Lengths and diameters are in the unit of the row, Helix_Angle is in degrees.

CREATE TABLE SINGLE_FLUTE_ROUTER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 6,
    Unit TEXT(2) DEFAULT 'mm',
    "Flutes_#" SHORT DEFAULT 1,
    Flute_Length DOUBLE DEFAULT 22,
    Overall_Length DOUBLE DEFAULT 60,
    Shank_Diameter DOUBLE DEFAULT 6,
    Helix_Angle DOUBLE DEFAULT 25,
    Cut_Direction TEXT(10) DEFAULT 'Upcut',
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
CREATE INDEX SINGLE_FLUTE_ROUTER_Name ON SINGLE_FLUTE_ROUTER (Name COLLATE NOCASE);

CREATE VIEW Q_SINGLE_FLUTE_ROUTER AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T."Flutes_#" AS "Flutes_#",
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Helix_Angle AS Helix_Angle,
       T.Cut_Direction AS Cut_Direction,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM SINGLE_FLUTE_ROUTER AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO SINGLE_FLUTE_ROUTER (Name, Diameter, Unit, Flute_Length, Overall_Length, Shank_Diameter, Cut_Direction,
    Standard) VALUES
    ('Single-flute router 1 x 4 mm upcut',      1, 'mm',  4, 38,  3, 'Upcut',   'Miniature series'),
    ('Single-flute router 1.5 x 6 mm upcut',  1.5, 'mm',  6, 38,  3, 'Upcut',   'Miniature series'),
    ('Single-flute router 2 x 8 mm upcut',      2, 'mm',  8, 38,  3, 'Upcut',   'Common series'),
    ('Single-flute router 2.5 x 10 mm upcut', 2.5, 'mm', 10, 38,  3, 'Upcut',   'Common series'),
    ('Single-flute router 3 x 12 mm upcut',     3, 'mm', 12, 38,  3, 'Upcut',   'Common series'),
    ('Single-flute router 3 x 17 mm upcut',     3, 'mm', 17, 50,  3, 'Upcut',   'Common series'),
    ('Single-flute router 4 x 15 mm upcut',     4, 'mm', 15, 50,  4, 'Upcut',   'Common series'),
    ('Single-flute router 4 x 22 mm upcut',     4, 'mm', 22, 50,  4, 'Upcut',   'Common series'),
    ('Single-flute router 5 x 17 mm upcut',     5, 'mm', 17, 50,  5, 'Upcut',   'Common series'),
    ('Single-flute router 5 x 22 mm upcut',     5, 'mm', 22, 60,  5, 'Upcut',   'Common series'),
    ('Single-flute router 6 x 22 mm upcut',     6, 'mm', 22, 60,  6, 'Upcut',   'Common series'),
    ('Single-flute router 6 x 32 mm upcut',     6, 'mm', 32, 70,  6, 'Upcut',   'Common series'),
    ('Single-flute router 8 x 25 mm upcut',     8, 'mm', 25, 63,  8, 'Upcut',   'Common series'),
    ('Single-flute router 8 x 32 mm upcut',     8, 'mm', 32, 80,  8, 'Upcut',   'Common series'),
    ('Single-flute router 10 x 32 mm upcut',   10, 'mm', 32, 75, 10, 'Upcut',   'Common series'),
    ('Single-flute router 12 x 35 mm upcut',   12, 'mm', 35, 83, 12, 'Upcut',   'Common series'),
    ('Single-flute router 3 x 12 mm downcut',   3, 'mm', 12, 38,  3, 'Downcut', 'Common series'),
    ('Single-flute router 4 x 15 mm downcut',   4, 'mm', 15, 50,  4, 'Downcut', 'Common series'),
    ('Single-flute router 6 x 22 mm downcut',   6, 'mm', 22, 60,  6, 'Downcut', 'Common series'),
    ('Single-flute router 8 x 25 mm downcut',   8, 'mm', 25, 63,  8, 'Downcut', 'Common series');

-- Inch sizes
INSERT INTO SINGLE_FLUTE_ROUTER (Name, Diameter, Unit, Flute_Length, Overall_Length, Shank_Diameter, Cut_Direction,
    Standard) VALUES
    ('Single-flute router 1/16 x 1/4 in upcut',    0.0625, 'in',  0.25, 1.5,  0.125, 'Upcut',   'Miniature series'),
    ('Single-flute router 3/32 x 3/8 in upcut',   0.09375, 'in', 0.375, 1.5,  0.125, 'Upcut',   'Common series'),
    ('Single-flute router 1/8 x 1/2 in upcut',      0.125, 'in',   0.5, 1.5,  0.125, 'Upcut',   'Common series'),
    ('Single-flute router 3/16 x 5/8 in upcut',    0.1875, 'in', 0.625,   2, 0.1875, 'Upcut',   'Common series'),
    ('Single-flute router 1/4 x 3/4 in upcut',       0.25, 'in',  0.75, 2.5,   0.25, 'Upcut',   'Common series'),
    ('Single-flute router 1/4 x 1-1/4 in upcut',     0.25, 'in',  1.25,   3,   0.25, 'Upcut',   'Common series'),
    ('Single-flute router 3/8 x 1-1/8 in upcut',    0.375, 'in', 1.125,   3,  0.375, 'Upcut',   'Common series'),
    ('Single-flute router 1/2 x 1-1/2 in upcut',      0.5, 'in',   1.5, 3.5,    0.5, 'Upcut',   'Common series'),
    ('Single-flute router 1/8 x 1/2 in downcut',    0.125, 'in',   0.5, 1.5,  0.125, 'Downcut', 'Common series'),
    ('Single-flute router 3/16 x 5/8 in downcut',  0.1875, 'in', 0.625,   2, 0.1875, 'Downcut', 'Common series'),
    ('Single-flute router 1/4 x 3/4 in downcut',     0.25, 'in',  0.75, 2.5,   0.25, 'Downcut', 'Common series');

UPDATE SINGLE_FLUTE_ROUTER SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);

-- Compression router bits: the flutes turn upwards for Upcut_Length from the tip and downwards above it, so that both
-- faces of a board keep their edges. Flutes_# counts the edges at one height.

CREATE TABLE COMPRESSION_ROUTER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Diameter DOUBLE DEFAULT 10,
    Unit TEXT(2) DEFAULT 'mm',
    "Flutes_#" SHORT DEFAULT 2,
    Flute_Length DOUBLE DEFAULT 32,
    Upcut_Length DOUBLE DEFAULT 8,
    Overall_Length DOUBLE DEFAULT 75,
    Shank_Diameter DOUBLE DEFAULT 10,
    Helix_Angle DOUBLE DEFAULT 30,
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
CREATE INDEX COMPRESSION_ROUTER_Name ON COMPRESSION_ROUTER (Name COLLATE NOCASE);

CREATE VIEW Q_COMPRESSION_ROUTER AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T."Flutes_#" AS "Flutes_#",
       T.Flute_Length AS Flute_Length,
       T.Upcut_Length AS Upcut_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Helix_Angle AS Helix_Angle,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM COMPRESSION_ROUTER AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric sizes
INSERT INTO COMPRESSION_ROUTER (Name, Diameter, Unit, "Flutes_#", Flute_Length, Upcut_Length, Overall_Length,
    Shank_Diameter) VALUES
    ('Compression router 3 x 12 mm 2+2',   3, 'mm', 2, 12,  3,  50,  6),
    ('Compression router 4 x 15 mm 1+1',   4, 'mm', 1, 15,  4,  50,  4),
    ('Compression router 4 x 15 mm 2+2',   4, 'mm', 2, 15,  4,  50,  4),
    ('Compression router 5 x 17 mm 2+2',   5, 'mm', 2, 17,  5,  50,  5),
    ('Compression router 6 x 22 mm 1+1',   6, 'mm', 1, 22,  5,  60,  6),
    ('Compression router 6 x 22 mm 2+2',   6, 'mm', 2, 22,  5,  60,  6),
    ('Compression router 6 x 32 mm 2+2',   6, 'mm', 2, 32,  6,  70,  6),
    ('Compression router 8 x 25 mm 2+2',   8, 'mm', 2, 25,  6,  65,  8),
    ('Compression router 8 x 32 mm 2+2',   8, 'mm', 2, 32,  7,  80,  8),
    ('Compression router 10 x 32 mm 2+2', 10, 'mm', 2, 32,  8,  75, 10),
    ('Compression router 10 x 32 mm 3+3', 10, 'mm', 3, 32,  8,  75, 10),
    ('Compression router 10 x 42 mm 2+2', 10, 'mm', 2, 42,  9,  90, 10),
    ('Compression router 12 x 35 mm 2+2', 12, 'mm', 2, 35,  9,  83, 12),
    ('Compression router 12 x 35 mm 3+3', 12, 'mm', 3, 35,  9,  83, 12),
    ('Compression router 12 x 42 mm 2+2', 12, 'mm', 2, 42, 10,  90, 12),
    ('Compression router 16 x 45 mm 2+2', 16, 'mm', 2, 45, 12, 100, 16),
    ('Compression router 16 x 45 mm 3+3', 16, 'mm', 3, 45, 12, 100, 16);

-- Inch sizes
INSERT INTO COMPRESSION_ROUTER (Name, Diameter, Unit, "Flutes_#", Flute_Length, Upcut_Length, Overall_Length,
    Shank_Diameter) VALUES
    ('Compression router 1/8 x 1/2 in 2+2',    0.125, 'in', 2,   0.5,  0.125,   2,   0.25),
    ('Compression router 3/16 x 5/8 in 2+2',  0.1875, 'in', 2, 0.625, 0.1875,   2, 0.1875),
    ('Compression router 1/4 x 7/8 in 1+1',     0.25, 'in', 1, 0.875, 0.1875, 2.5,   0.25),
    ('Compression router 1/4 x 7/8 in 2+2',     0.25, 'in', 2, 0.875, 0.1875, 2.5,   0.25),
    ('Compression router 3/8 x 1 in 2+2',      0.375, 'in', 2,     1,   0.25,   3,  0.375),
    ('Compression router 3/8 x 1-1/4 in 2+2',  0.375, 'in', 2,  1.25,   0.25,   3,  0.375),
    ('Compression router 3/8 x 1-1/4 in 3+3',  0.375, 'in', 3,  1.25,   0.25,   3,  0.375),
    ('Compression router 1/2 x 1-1/4 in 2+2',    0.5, 'in', 2,  1.25,  0.375,   3,    0.5),
    ('Compression router 1/2 x 1-5/8 in 2+2',    0.5, 'in', 2, 1.625,  0.375, 3.5,    0.5),
    ('Compression router 1/2 x 1-5/8 in 3+3',    0.5, 'in', 3, 1.625,  0.375, 3.5,    0.5),
    ('Compression router 1/2 x 2-1/8 in 2+2',    0.5, 'in', 2, 2.125, 0.4375,   4,    0.5),
    ('Compression router 3/4 x 2-1/8 in 3+3',   0.75, 'in', 3, 2.125,    0.5,   4,   0.75);

UPDATE COMPRESSION_ROUTER SET Standard = 'Common series';
UPDATE COMPRESSION_ROUTER SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
