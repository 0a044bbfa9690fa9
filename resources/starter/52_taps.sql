-- Taps for metric coarse (M), metric fine (MF), UNC and UNF threads.
-- Diameter, Pitch, Tap_Drill and the lengths are in the unit of the row; Threads_Per_Inch is kept for every row.
-- TappingHead is the ID of a tapping head, Null when the tap runs without one. The approach and retraction values
-- that the stored query shows are those of the head: they are read here and changed there.

CREATE TABLE TAP (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Thread_Size TEXT(30),
    Thread_Series TEXT(10) DEFAULT 'M',
    Diameter DOUBLE DEFAULT 6,
    Unit TEXT(2) DEFAULT 'mm',
    Pitch DOUBLE DEFAULT 1,
    Threads_Per_Inch DOUBLE DEFAULT 25.4,
    Tap_Drill DOUBLE DEFAULT 5,
    Thread_Length DOUBLE DEFAULT 17,
    Overall_Length DOUBLE DEFAULT 80,
    Shank_Diameter DOUBLE DEFAULT 6,
    "Flutes_#" SHORT DEFAULT 3,
    Chamfer TEXT(20) DEFAULT 'Plug',
    Hand TEXT(10) DEFAULT 'Right',
    Tolerance_Class TEXT(10) DEFAULT '6H',
    Standard TEXT(40),
    Material LONG DEFAULT 4,
    Coating LONG DEFAULT 3,
    Holder LONG,
    TappingHead LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX TAP_Name ON TAP (Name COLLATE NOCASE);

CREATE VIEW Q_TAP AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Thread_Size AS Thread_Size,
       T.Thread_Series AS Thread_Series,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Pitch AS Pitch,
       T.Threads_Per_Inch AS Threads_Per_Inch,
       T.Tap_Drill AS Tap_Drill,
       T.Thread_Length AS Thread_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T."Flutes_#" AS "Flutes_#",
       T.Chamfer AS Chamfer,
       T.Hand AS Hand,
       T.Tolerance_Class AS Tolerance_Class,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       H.Name AS TappingHead,
       H.Approach_Height AS Approach_Height,
       H.Retraction_Height AS Retraction_Height,
       H.Extra_Depth AS Extra_Depth,
       H.Retraction_Ratio AS Retraction_Ratio,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM TAP AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder
LEFT JOIN TAPPING_HEAD AS H ON H.ID = T.TappingHead;

-- Metric coarse
INSERT INTO TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Pitch, Tap_Drill, Thread_Length,
    Overall_Length, Shank_Diameter, "Flutes_#", Tolerance_Class, Standard) VALUES
    ('Tap M2',   'M2x0.4',    'M',   2, 'mm',  0.4,  1.6,  8,  45, 2.8, 2, '6H', 'DIN 371'),
    ('Tap M2.5', 'M2.5x0.45', 'M', 2.5, 'mm', 0.45, 2.05,  9,  50, 2.8, 2, '6H', 'DIN 371'),
    ('Tap M3',   'M3x0.5',    'M',   3, 'mm',  0.5,  2.5, 11,  56, 3.5, 3, '6H', 'DIN 371'),
    ('Tap M4',   'M4x0.7',    'M',   4, 'mm',  0.7,  3.3, 13,  63, 4.5, 3, '6H', 'DIN 371'),
    ('Tap M5',   'M5x0.8',    'M',   5, 'mm',  0.8,  4.2, 15,  70,   6, 3, '6H', 'DIN 371'),
    ('Tap M6',   'M6x1',      'M',   6, 'mm',    1,    5, 17,  80,   6, 3, '6H', 'DIN 371'),
    ('Tap M8',   'M8x1.25',   'M',   8, 'mm', 1.25,  6.8, 20,  90,   8, 3, '6H', 'DIN 371'),
    ('Tap M10',  'M10x1.5',   'M',  10, 'mm',  1.5,  8.5, 22, 100,  10, 3, '6H', 'DIN 371'),
    ('Tap M12',  'M12x1.75',  'M',  12, 'mm', 1.75, 10.2, 24, 110,   9, 3, '6H', 'DIN 376'),
    ('Tap M14',  'M14x2',     'M',  14, 'mm',    2,   12, 26, 110,  11, 4, '6H', 'DIN 376'),
    ('Tap M16',  'M16x2',     'M',  16, 'mm',    2,   14, 27, 110,  12, 4, '6H', 'DIN 376'),
    ('Tap M18',  'M18x2.5',   'M',  18, 'mm',  2.5, 15.5, 30, 125,  14, 4, '6H', 'DIN 376'),
    ('Tap M20',  'M20x2.5',   'M',  20, 'mm',  2.5, 17.5, 32, 140,  16, 4, '6H', 'DIN 376'),
    ('Tap M22',  'M22x2.5',   'M',  22, 'mm',  2.5, 19.5, 32, 140,  18, 4, '6H', 'DIN 376'),
    ('Tap M24',  'M24x3',     'M',  24, 'mm',    3,   21, 34, 160,  18, 4, '6H', 'DIN 376'),
    ('Tap M27',  'M27x3',     'M',  27, 'mm',    3,   24, 36, 160,  20, 4, '6H', 'DIN 376'),
    ('Tap M30',  'M30x3.5',   'M',  30, 'mm',  3.5, 26.5, 40, 180,  22, 4, '6H', 'DIN 376'),
    ('Tap M33',  'M33x3.5',   'M',  33, 'mm',  3.5, 29.5, 40, 180,  25, 4, '6H', 'DIN 376'),
    ('Tap M36',  'M36x4',     'M',  36, 'mm',    4,   32, 50, 200,  28, 4, '6H', 'DIN 376');

-- Metric fine
INSERT INTO TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Pitch, Tap_Drill, Thread_Length,
    Overall_Length, Shank_Diameter, "Flutes_#", Tolerance_Class, Standard) VALUES
    ('Tap M4x0.5',   'M4x0.5',   'MF',  4, 'mm',  0.5,  3.5, 10,  63, 2.8, 3, '6H', 'DIN 374'),
    ('Tap M5x0.5',   'M5x0.5',   'MF',  5, 'mm',  0.5,  4.5, 11,  70, 3.5, 3, '6H', 'DIN 374'),
    ('Tap M6x0.75',  'M6x0.75',  'MF',  6, 'mm', 0.75,  5.2, 13,  80, 4.5, 3, '6H', 'DIN 374'),
    ('Tap M8x0.75',  'M8x0.75',  'MF',  8, 'mm', 0.75,  7.2, 14,  80,   6, 3, '6H', 'DIN 374'),
    ('Tap M8x1',     'M8x1',     'MF',  8, 'mm',    1,    7, 17,  90,   6, 3, '6H', 'DIN 374'),
    ('Tap M10x1',    'M10x1',    'MF', 10, 'mm',    1,    9, 18,  90,   7, 3, '6H', 'DIN 374'),
    ('Tap M10x1.25', 'M10x1.25', 'MF', 10, 'mm', 1.25,  8.8, 20, 100,   7, 3, '6H', 'DIN 374'),
    ('Tap M12x1',    'M12x1',    'MF', 12, 'mm',    1,   11, 18, 100,   9, 3, '6H', 'DIN 374'),
    ('Tap M12x1.25', 'M12x1.25', 'MF', 12, 'mm', 1.25, 10.8, 20, 100,   9, 3, '6H', 'DIN 374'),
    ('Tap M12x1.5',  'M12x1.5',  'MF', 12, 'mm',  1.5, 10.5, 21, 100,   9, 3, '6H', 'DIN 374'),
    ('Tap M14x1.5',  'M14x1.5',  'MF', 14, 'mm',  1.5, 12.5, 21, 100,  11, 4, '6H', 'DIN 374'),
    ('Tap M16x1.5',  'M16x1.5',  'MF', 16, 'mm',  1.5, 14.5, 21, 100,  12, 4, '6H', 'DIN 374'),
    ('Tap M18x1.5',  'M18x1.5',  'MF', 18, 'mm',  1.5, 16.5, 24, 110,  14, 4, '6H', 'DIN 374'),
    ('Tap M20x1.5',  'M20x1.5',  'MF', 20, 'mm',  1.5, 18.5, 24, 125,  16, 4, '6H', 'DIN 374'),
    ('Tap M22x1.5',  'M22x1.5',  'MF', 22, 'mm',  1.5, 20.5, 24, 125,  18, 4, '6H', 'DIN 374'),
    ('Tap M24x1.5',  'M24x1.5',  'MF', 24, 'mm',  1.5, 22.5, 26, 140,  18, 4, '6H', 'DIN 374'),
    ('Tap M24x2',    'M24x2',    'MF', 24, 'mm',    2,   22, 26, 140,  18, 4, '6H', 'DIN 374'),
    ('Tap M27x2',    'M27x2',    'MF', 27, 'mm',    2,   25, 28, 140,  20, 4, '6H', 'DIN 374'),
    ('Tap M30x2',    'M30x2',    'MF', 30, 'mm',    2,   28, 28, 150,  22, 4, '6H', 'DIN 374'),
    ('Tap M33x2',    'M33x2',    'MF', 33, 'mm',    2,   31, 30, 160,  25, 4, '6H', 'DIN 374'),
    ('Tap M36x3',    'M36x3',    'MF', 36, 'mm',    3,   33, 38, 200,  28, 4, '6H', 'DIN 374');

-- Unified coarse
INSERT INTO TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Threads_Per_Inch, Tap_Drill,
    Thread_Length, Overall_Length, Shank_Diameter, "Flutes_#", Tolerance_Class, Standard) VALUES
    ('Tap #2-56 UNC',   '#2-56',   'UNC',  0.086, 'in', 56,     0.07,  0.4375,    1.75, 0.141, 2, '2B', 'ASME B94.9'),
    ('Tap #4-40 UNC',   '#4-40',   'UNC',  0.112, 'in', 40,    0.089,  0.5625,   1.875, 0.141, 2, '2B', 'ASME B94.9'),
    ('Tap #5-40 UNC',   '#5-40',   'UNC',  0.125, 'in', 40,   0.1015,   0.625,  1.9375, 0.141, 3, '2B', 'ASME B94.9'),
    ('Tap #6-32 UNC',   '#6-32',   'UNC',  0.138, 'in', 32,   0.1065,  0.6875,       2, 0.141, 3, '2B', 'ASME B94.9'),
    ('Tap #8-32 UNC',   '#8-32',   'UNC',  0.164, 'in', 32,    0.136,    0.75,   2.125, 0.168, 3, '2B', 'ASME B94.9'),
    ('Tap #10-24 UNC',  '#10-24',  'UNC',   0.19, 'in', 24,   0.1495,   0.875,   2.375, 0.194, 3, '2B', 'ASME B94.9'),
    ('Tap #12-24 UNC',  '#12-24',  'UNC',  0.216, 'in', 24,    0.177,  0.9375,   2.375,  0.22, 3, '2B', 'ASME B94.9'),
    ('Tap 1/4-20 UNC',  '1/4-20',  'UNC',   0.25, 'in', 20,    0.201,       1,     2.5, 0.255, 3, '2B', 'ASME B94.9'),
    ('Tap 5/16-18 UNC', '5/16-18', 'UNC', 0.3125, 'in', 18,    0.257,   1.125, 2.71875, 0.318, 3, '2B', 'ASME B94.9'),
    ('Tap 3/8-16 UNC',  '3/8-16',  'UNC',  0.375, 'in', 16,   0.3125,    1.25,  2.9375, 0.381, 3, '2B', 'ASME B94.9'),
    ('Tap 7/16-14 UNC', '7/16-14', 'UNC', 0.4375, 'in', 14,    0.368,  1.4375, 3.15625, 0.323, 3, '2B', 'ASME B94.9'),
    ('Tap 1/2-13 UNC',  '1/2-13',  'UNC',    0.5, 'in', 13, 0.421875, 1.65625,   3.375, 0.367, 3, '2B', 'ASME B94.9'),
    ('Tap 9/16-12 UNC', '9/16-12', 'UNC', 0.5625, 'in', 12, 0.484375, 1.65625, 3.59375, 0.429, 4, '2B', 'ASME B94.9'),
    ('Tap 5/8-11 UNC',  '5/8-11',  'UNC',  0.625, 'in', 11,  0.53125,  1.8125,  3.8125,  0.48, 4, '2B', 'ASME B94.9'),
    ('Tap 3/4-10 UNC',  '3/4-10',  'UNC',   0.75, 'in', 10,  0.65625,       2,    4.25,  0.59, 4, '2B', 'ASME B94.9'),
    ('Tap 7/8-9 UNC',   '7/8-9',   'UNC',  0.875, 'in',  9, 0.765625, 2.21875,  4.6875, 0.697, 4, '2B', 'ASME B94.9'),
    ('Tap 1-8 UNC',     '1-8',     'UNC',      1, 'in',  8,    0.875,     2.5,   5.125,   0.8, 4, '2B', 'ASME B94.9'),
    ('Tap 1-1/8-7 UNC', '1-1/8-7', 'UNC',  1.125, 'in',  7, 0.984375,  2.5625,  5.4375, 0.896, 4, '2B', 'ASME B94.9'),
    ('Tap 1-1/4-7 UNC', '1-1/4-7', 'UNC',   1.25, 'in',  7, 1.109375,  2.5625,    5.75, 1.021, 4, '2B', 'ASME B94.9'),
    ('Tap 1-1/2-6 UNC', '1-1/2-6', 'UNC',    1.5, 'in',  6,  1.34375,       3,   6.375, 1.233, 4, '2B', 'ASME B94.9');

-- Unified fine
INSERT INTO TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Threads_Per_Inch, Tap_Drill,
    Thread_Length, Overall_Length, Shank_Diameter, "Flutes_#", Tolerance_Class, Standard) VALUES
    ('Tap #0-80 UNF',   '#0-80',   'UNF',   0.06, 'in', 80, 0.046875,  0.3125,   1.625, 0.141, 2, '2B', 'ASME B94.9'),
    ('Tap #2-64 UNF',   '#2-64',   'UNF',  0.086, 'in', 64,     0.07,  0.4375,    1.75, 0.141, 2, '2B', 'ASME B94.9'),
    ('Tap #4-48 UNF',   '#4-48',   'UNF',  0.112, 'in', 48,   0.0935,  0.5625,   1.875, 0.141, 2, '2B', 'ASME B94.9'),
    ('Tap #6-40 UNF',   '#6-40',   'UNF',  0.138, 'in', 40,    0.113,  0.6875,       2, 0.141, 3, '2B', 'ASME B94.9'),
    ('Tap #8-36 UNF',   '#8-36',   'UNF',  0.164, 'in', 36,    0.136,    0.75,   2.125, 0.168, 3, '2B', 'ASME B94.9'),
    ('Tap #10-32 UNF',  '#10-32',  'UNF',   0.19, 'in', 32,    0.159,   0.875,   2.375, 0.194, 3, '2B', 'ASME B94.9'),
    ('Tap 1/4-28 UNF',  '1/4-28',  'UNF',   0.25, 'in', 28,    0.213,       1,     2.5, 0.255, 3, '2B', 'ASME B94.9'),
    ('Tap 5/16-24 UNF', '5/16-24', 'UNF', 0.3125, 'in', 24,    0.272,   1.125, 2.71875, 0.318, 3, '2B', 'ASME B94.9'),
    ('Tap 3/8-24 UNF',  '3/8-24',  'UNF',  0.375, 'in', 24,    0.332,    1.25,  2.9375, 0.381, 3, '2B', 'ASME B94.9'),
    ('Tap 7/16-20 UNF', '7/16-20', 'UNF', 0.4375, 'in', 20, 0.390625,  1.4375, 3.15625, 0.323, 3, '2B', 'ASME B94.9'),
    ('Tap 1/2-20 UNF',  '1/2-20',  'UNF',    0.5, 'in', 20, 0.453125, 1.65625,   3.375, 0.367, 3, '2B', 'ASME B94.9'),
    ('Tap 9/16-18 UNF', '9/16-18', 'UNF', 0.5625, 'in', 18, 0.515625, 1.65625, 3.59375, 0.429, 4, '2B', 'ASME B94.9'),
    ('Tap 5/8-18 UNF',  '5/8-18',  'UNF',  0.625, 'in', 18, 0.578125,  1.8125,  3.8125,  0.48, 4, '2B', 'ASME B94.9'),
    ('Tap 3/4-16 UNF',  '3/4-16',  'UNF',   0.75, 'in', 16,   0.6875,       2,    4.25,  0.59, 4, '2B', 'ASME B94.9'),
    ('Tap 7/8-14 UNF',  '7/8-14',  'UNF',  0.875, 'in', 14,   0.8125, 2.21875,  4.6875, 0.697, 4, '2B', 'ASME B94.9'),
    ('Tap 1-12 UNF',    '1-12',    'UNF',      1, 'in', 12, 0.921875,     2.5,   5.125,   0.8, 4, '2B', 'ASME B94.9');

UPDATE TAP SET Threads_Per_Inch = round(25.4 / Pitch, 6) WHERE Unit = 'mm';
UPDATE TAP SET Pitch = round(1 / Threads_Per_Inch, 6) WHERE Unit = 'in';
UPDATE TAP SET Coating = (SELECT ID FROM COATING WHERE Name = 'TiCN')
WHERE Thread_Series IN ('MF', 'UNF');
-- A head for the sizes that are tapped in series; the rest runs without a head.
UPDATE TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Synchro M1-M6')
WHERE Unit = 'mm' AND Diameter < 3;
UPDATE TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Synchro M3-M12')
WHERE Unit = 'mm' AND Diameter BETWEEN 3 AND 12;
UPDATE TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Compensating M14-M33')
WHERE Unit = 'mm' AND Diameter BETWEEN 14 AND 24;
UPDATE TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Synchro #6-1/2 in')
WHERE Unit = 'in' AND Diameter BETWEEN 0.138 AND 0.5;
UPDATE TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Compensating 1/2-1 in')
WHERE Unit = 'in' AND Diameter > 0.5 AND Diameter <= 1;
UPDATE TAP SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
UPDATE TAP SET IsFavorite = -1 WHERE Name IN ('Tap M6', 'Tap M8', 'Tap M10', 'Tap 1/4-20 UNC', 'Tap 3/8-16 UNC');
