-- Solid carbide thread mills. Thread_Size is the smallest internal thread of the Pitch that the cutter fits into;
-- larger threads of the same pitch take the same cutter. Lengths and diameters are in the unit of the row.

CREATE TABLE THREAD_MILL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Thread_Size TEXT(30),
    Diameter DOUBLE DEFAULT 4.8,
    Unit TEXT(2) DEFAULT 'mm',
    Pitch DOUBLE DEFAULT 1,
    "Flutes_#" SHORT DEFAULT 3,
    Flute_Length DOUBLE DEFAULT 14,
    Overall_Length DOUBLE DEFAULT 58,
    Shank_Diameter DOUBLE DEFAULT 6,
    Internal BOOLEAN DEFAULT -1,
    Standard TEXT(40),
    Material LONG DEFAULT 5,
    Coating LONG DEFAULT 4,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX THREAD_MILL_Name ON THREAD_MILL (Name COLLATE NOCASE);

CREATE VIEW Q_THREAD_MILL AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Thread_Size AS Thread_Size,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Pitch AS Pitch,
       T."Flutes_#" AS "Flutes_#",
       T.Flute_Length AS Flute_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T.Internal AS Internal,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM THREAD_MILL AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric threads
INSERT INTO THREAD_MILL (Name, Thread_Size, Diameter, Unit, Pitch, "Flutes_#", Flute_Length, Overall_Length,
    Shank_Diameter) VALUES
    ('Thread mill M2x0.4',    'M2x0.4',     1.5, 'mm',  0.4, 3,  4.2,  50,  6),
    ('Thread mill M2.5x0.45', 'M2.5x0.45',  1.9, 'mm', 0.45, 3,  5.2,  50,  6),
    ('Thread mill M3x0.5',    'M3x0.5',     2.3, 'mm',  0.5, 3,  6.3,  58,  6),
    ('Thread mill M4x0.7',    'M4x0.7',     3.1, 'mm',  0.7, 3,  8.4,  58,  6),
    ('Thread mill M5x0.8',    'M5x0.8',     3.8, 'mm',  0.8, 3, 10.5,  58,  6),
    ('Thread mill M6x1',      'M6x1',       4.6, 'mm',    1, 3, 12.5,  58,  6),
    ('Thread mill M8x1.25',   'M8x1.25',      6, 'mm', 1.25, 3, 16.7,  58,  6),
    ('Thread mill M8x1',      'M8x1',         6, 'mm',    1, 3, 16.5,  58,  6),
    ('Thread mill M10x1.5',   'M10x1.5',    7.7, 'mm',  1.5, 4, 20.8,  64,  8),
    ('Thread mill M10x1',     'M10x1',        8, 'mm',    1, 4, 20.5,  64,  8),
    ('Thread mill M12x1.75',  'M12x1.75',   9.5, 'mm', 1.75, 4,   25,  73, 10),
    ('Thread mill M12x1.5',   'M12x1.5',    9.9, 'mm',  1.5, 4, 24.8,  73, 10),
    ('Thread mill M14x2',     'M14x2',     10.9, 'mm',    2, 4,   29,  84, 12),
    ('Thread mill M16x2',     'M16x2',     11.9, 'mm',    2, 4,   33,  84, 12),
    ('Thread mill M16x1.5',   'M16x1.5',     12, 'mm',  1.5, 5,   33,  84, 12),
    ('Thread mill M20x2.5',   'M20x2.5',   15.9, 'mm',  2.5, 5,   41, 105, 16),
    ('Thread mill M24x3',     'M24x3',     15.9, 'mm',    3, 5,   49, 105, 16);

-- Unified threads
INSERT INTO THREAD_MILL (Name, Thread_Size, Diameter, Unit, Pitch, "Flutes_#", Flute_Length, Overall_Length,
    Shank_Diameter) VALUES
    ('Thread mill #4-40 UNC',   '#4-40',    0.08, 'in',    0.025, 3, 0.22,   2,  0.125),
    ('Thread mill #6-32 UNC',   '#6-32',   0.095, 'in',  0.03125, 3, 0.28,   2,  0.125),
    ('Thread mill #8-32 UNC',   '#8-32',    0.12, 'in',  0.03125, 3, 0.33,   2,  0.125),
    ('Thread mill #10-24 UNC',  '#10-24',  0.135, 'in', 0.041667, 3, 0.38, 2.5, 0.1875),
    ('Thread mill #10-32 UNF',  '#10-32',  0.145, 'in',  0.03125, 3, 0.38, 2.5, 0.1875),
    ('Thread mill 1/4-20 UNC',  '1/4-20',   0.18, 'in',     0.05, 3,  0.5, 2.5,   0.25),
    ('Thread mill 1/4-28 UNF',  '1/4-28',  0.195, 'in', 0.035714, 3,  0.5, 2.5,   0.25),
    ('Thread mill 5/16-18 UNC', '5/16-18',  0.24, 'in', 0.055556, 3, 0.65, 2.5,   0.25),
    ('Thread mill 5/16-24 UNF', '5/16-24',  0.24, 'in', 0.041667, 4, 0.65, 2.5,   0.25),
    ('Thread mill 3/8-16 UNC',  '3/8-16',  0.285, 'in',   0.0625, 4,  0.8,   3, 0.3125),
    ('Thread mill 3/8-24 UNF',  '3/8-24',   0.31, 'in', 0.041667, 4,  0.8,   3, 0.3125),
    ('Thread mill 7/16-14 UNC', '7/16-14',  0.32, 'in', 0.071429, 4,  0.9,   3,  0.375),
    ('Thread mill 1/2-13 UNC',  '1/2-13',   0.37, 'in', 0.076923, 4, 1.05, 3.5,  0.375),
    ('Thread mill 1/2-20 UNF',  '1/2-20',   0.37, 'in',     0.05, 4, 1.05, 3.5,  0.375),
    ('Thread mill 5/8-11 UNC',  '5/8-11',   0.47, 'in', 0.090909, 4,  1.3, 3.5,    0.5),
    ('Thread mill 3/4-10 UNC',  '3/4-10',  0.495, 'in',      0.1, 5, 1.55,   4,    0.5),
    ('Thread mill 1-8 UNC',     '1-8',      0.62, 'in',    0.125, 5, 2.05,   4,  0.625);

UPDATE THREAD_MILL SET Standard = 'Common series';
UPDATE THREAD_MILL SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
