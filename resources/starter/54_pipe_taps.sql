-- Pipe taps: NPT and NPTF (taper, inch rows), G (parallel) and Rc (taper, millimetre rows).
-- Diameter is the outside diameter of the pipe thread, not the nominal size; Taper is on the diameter, per length
-- (1 in 16 for taper threads, 0 for parallel ones). Tap_Drill is for tapping without reaming; dryseal threads, whose
-- crests must touch, take smaller ones. The heads and their values work as for the table TAP.

CREATE TABLE PIPE_TAP (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Thread_Size TEXT(30),
    Thread_Series TEXT(10) DEFAULT 'NPT',
    Diameter DOUBLE DEFAULT 0.84,
    Unit TEXT(2) DEFAULT 'in',
    Pitch DOUBLE DEFAULT 0.071429,
    Threads_Per_Inch DOUBLE DEFAULT 14,
    Taper DOUBLE DEFAULT 0.0625,
    Tap_Drill DOUBLE DEFAULT 0.71875,
    Thread_Length DOUBLE DEFAULT 1.375,
    Overall_Length DOUBLE DEFAULT 3.125,
    Shank_Diameter DOUBLE DEFAULT 0.6875,
    "Flutes_#" SHORT DEFAULT 4,
    Chamfer TEXT(20) DEFAULT 'Plug',
    Hand TEXT(10) DEFAULT 'Right',
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
CREATE INDEX PIPE_TAP_Name ON PIPE_TAP (Name COLLATE NOCASE);

CREATE VIEW Q_PIPE_TAP AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Thread_Size AS Thread_Size,
       T.Thread_Series AS Thread_Series,
       T.Diameter AS Diameter,
       T.Unit AS Unit,
       T.Pitch AS Pitch,
       T.Threads_Per_Inch AS Threads_Per_Inch,
       T.Taper AS Taper,
       T.Tap_Drill AS Tap_Drill,
       T.Thread_Length AS Thread_Length,
       T.Overall_Length AS Overall_Length,
       T.Shank_Diameter AS Shank_Diameter,
       T."Flutes_#" AS "Flutes_#",
       T.Chamfer AS Chamfer,
       T.Hand AS Hand,
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
FROM PIPE_TAP AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder
LEFT JOIN TAPPING_HEAD AS H ON H.ID = T.TappingHead;

-- American taper pipe thread
INSERT INTO PIPE_TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Threads_Per_Inch, Taper, Tap_Drill,
    Thread_Length, Overall_Length, Shank_Diameter, "Flutes_#") VALUES
    ('Pipe tap 1/16-27 NPT',    '1/16-27',    'NPT', 0.3125, 'in',   27, 0.0625,     0.25, 0.6875,  2.125, 0.3125, 4),
    ('Pipe tap 1/8-27 NPT',     '1/8-27',     'NPT',  0.405, 'in',   27, 0.0625,    0.339,   0.75,  2.125, 0.4375, 4),
    ('Pipe tap 1/4-18 NPT',     '1/4-18',     'NPT',   0.54, 'in',   18, 0.0625,   0.4375, 1.0625, 2.4375, 0.5625, 4),
    ('Pipe tap 3/8-18 NPT',     '3/8-18',     'NPT',  0.675, 'in',   18, 0.0625, 0.578125, 1.0625, 2.5625,    0.7, 4),
    ('Pipe tap 1/2-14 NPT',     '1/2-14',     'NPT',   0.84, 'in',   14, 0.0625,  0.71875,  1.375,  3.125, 0.6875, 4),
    ('Pipe tap 3/4-14 NPT',     '3/4-14',     'NPT',   1.05, 'in',   14, 0.0625, 0.921875,  1.375,   3.25, 0.9063, 5),
    ('Pipe tap 1-11.5 NPT',     '1-11.5',     'NPT',  1.315, 'in', 11.5, 0.0625,  1.15625,   1.75,   3.75,  1.125, 5),
    ('Pipe tap 1-1/4-11.5 NPT', '1-1/4-11.5', 'NPT',   1.66, 'in', 11.5, 0.0625,      1.5,   1.75,      4, 1.3125, 5),
    ('Pipe tap 1-1/2-11.5 NPT', '1-1/2-11.5', 'NPT',    1.9, 'in', 11.5, 0.0625, 1.734375,   1.75,   4.25,    1.5, 7),
    ('Pipe tap 2-11.5 NPT',     '2-11.5',     'NPT',  2.375, 'in', 11.5, 0.0625,  2.21875,   1.75,    4.5,  1.875, 7),
    ('Pipe tap 2-1/2-8 NPT',    '2-1/2-8',    'NPT',  2.875, 'in',    8, 0.0625,    2.625, 2.5625,    5.5,   2.25, 8),
    ('Pipe tap 3-8 NPT',        '3-8',        'NPT',    3.5, 'in',    8, 0.0625,     3.25,  2.625,      6,  2.625, 8);

-- American dryseal taper pipe thread
INSERT INTO PIPE_TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Threads_Per_Inch, Taper, Tap_Drill,
    Thread_Length, Overall_Length, Shank_Diameter, "Flutes_#") VALUES
    ('Pipe tap 1/16-27 NPTF',    '1/16-27',    'NPTF', 0.3125, 'in',   27, 0.0625,    0.242, 0.6875,  2.125, 0.3125, 4),
    ('Pipe tap 1/8-27 NPTF',     '1/8-27',     'NPTF',  0.405, 'in',   27, 0.0625,    0.332,   0.75,  2.125, 0.4375, 4),
    ('Pipe tap 1/4-18 NPTF',     '1/4-18',     'NPTF',   0.54, 'in',   18, 0.0625,   0.4375, 1.0625, 2.4375, 0.5625, 4),
    ('Pipe tap 3/8-18 NPTF',     '3/8-18',     'NPTF',  0.675, 'in',   18, 0.0625,   0.5625, 1.0625, 2.5625,    0.7, 4),
    ('Pipe tap 1/2-14 NPTF',     '1/2-14',     'NPTF',   0.84, 'in',   14, 0.0625, 0.703125,  1.375,  3.125, 0.6875, 4),
    ('Pipe tap 3/4-14 NPTF',     '3/4-14',     'NPTF',   1.05, 'in',   14, 0.0625,  0.90625,  1.375,   3.25, 0.9063, 5),
    ('Pipe tap 1-11.5 NPTF',     '1-11.5',     'NPTF',  1.315, 'in', 11.5, 0.0625, 1.140625,   1.75,   3.75,  1.125, 5),
    ('Pipe tap 1-1/4-11.5 NPTF', '1-1/4-11.5', 'NPTF',   1.66, 'in', 11.5, 0.0625, 1.484375,   1.75,      4, 1.3125, 5),
    ('Pipe tap 1-1/2-11.5 NPTF', '1-1/2-11.5', 'NPTF',    1.9, 'in', 11.5, 0.0625,  1.71875,   1.75,   4.25,    1.5, 7),
    ('Pipe tap 2-11.5 NPTF',     '2-11.5',     'NPTF',  2.375, 'in', 11.5, 0.0625,   2.1875,   1.75,    4.5,  1.875, 7);

-- Parallel pipe thread
INSERT INTO PIPE_TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Threads_Per_Inch, Taper, Tap_Drill,
    Thread_Length, Overall_Length, Shank_Diameter, "Flutes_#") VALUES
    ('Pipe tap G 1/16',  'G 1/16',  'G',  7.723, 'mm', 28, 0,   6.8, 18,  90,  6, 3),
    ('Pipe tap G 1/8',   'G 1/8',   'G',  9.728, 'mm', 28, 0,   8.8, 20,  90,  7, 4),
    ('Pipe tap G 1/4',   'G 1/4',   'G', 13.157, 'mm', 19, 0,  11.8, 22, 100, 11, 4),
    ('Pipe tap G 3/8',   'G 3/8',   'G', 16.662, 'mm', 19, 0, 15.25, 22, 100, 12, 4),
    ('Pipe tap G 1/2',   'G 1/2',   'G', 20.955, 'mm', 14, 0,    19, 25, 125, 16, 4),
    ('Pipe tap G 5/8',   'G 5/8',   'G', 22.911, 'mm', 14, 0,    21, 25, 125, 18, 4),
    ('Pipe tap G 3/4',   'G 3/4',   'G', 26.441, 'mm', 14, 0,  24.5, 28, 140, 20, 4),
    ('Pipe tap G 7/8',   'G 7/8',   'G', 30.201, 'mm', 14, 0, 28.25, 28, 150, 22, 6),
    ('Pipe tap G 1',     'G 1',     'G', 33.249, 'mm', 11, 0, 30.75, 30, 160, 25, 6),
    ('Pipe tap G 1-1/4', 'G 1-1/4', 'G',  41.91, 'mm', 11, 0,  39.5, 30, 170, 32, 6),
    ('Pipe tap G 1-1/2', 'G 1-1/2', 'G', 47.803, 'mm', 11, 0, 45.25, 32, 190, 36, 6),
    ('Pipe tap G 2',     'G 2',     'G', 59.614, 'mm', 11, 0,    57, 40, 220, 45, 6);

-- Taper pipe thread
INSERT INTO PIPE_TAP (Name, Thread_Size, Thread_Series, Diameter, Unit, Threads_Per_Inch, Taper, Tap_Drill,
    Thread_Length, Overall_Length, Shank_Diameter, "Flutes_#") VALUES
    ('Pipe tap Rc 1/16',  'Rc 1/16',  'Rc',  7.723, 'mm', 28, 0.0625,   6.4, 14,  90,  6, 3),
    ('Pipe tap Rc 1/8',   'Rc 1/8',   'Rc',  9.728, 'mm', 28, 0.0625,   8.4, 15,  90,  7, 4),
    ('Pipe tap Rc 1/4',   'Rc 1/4',   'Rc', 13.157, 'mm', 19, 0.0625,  11.2, 19, 100, 11, 4),
    ('Pipe tap Rc 3/8',   'Rc 3/8',   'Rc', 16.662, 'mm', 19, 0.0625, 14.75, 21, 100, 12, 4),
    ('Pipe tap Rc 1/2',   'Rc 1/2',   'Rc', 20.955, 'mm', 14, 0.0625, 18.25, 26, 125, 16, 4),
    ('Pipe tap Rc 3/4',   'Rc 3/4',   'Rc', 26.441, 'mm', 14, 0.0625, 23.75, 28, 140, 20, 4),
    ('Pipe tap Rc 1',     'Rc 1',     'Rc', 33.249, 'mm', 11, 0.0625,    30, 33, 160, 25, 6),
    ('Pipe tap Rc 1-1/4', 'Rc 1-1/4', 'Rc',  41.91, 'mm', 11, 0.0625,  38.5, 36, 170, 32, 6),
    ('Pipe tap Rc 1-1/2', 'Rc 1-1/2', 'Rc', 47.803, 'mm', 11, 0.0625,  44.5, 37, 190, 36, 6),
    ('Pipe tap Rc 2',     'Rc 2',     'Rc', 59.614, 'mm', 11, 0.0625,    56, 41, 220, 45, 6);

UPDATE PIPE_TAP SET Standard = CASE Thread_Series
    WHEN 'NPT' THEN 'ASME B1.20.1' WHEN 'NPTF' THEN 'ASME B1.20.3' WHEN 'G' THEN 'ISO 228-1' ELSE 'ISO 7-1' END;
UPDATE PIPE_TAP SET Pitch = round(CASE Unit WHEN 'in' THEN 1 ELSE 25.4 END / Threads_Per_Inch, 6);
UPDATE PIPE_TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Compensating M8-M20')
WHERE Unit = 'mm' AND Diameter BETWEEN 8 AND 20;
UPDATE PIPE_TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Compensating M14-M33')
WHERE Unit = 'mm' AND Diameter > 20 AND Diameter <= 33;
UPDATE PIPE_TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Compensating #8-9/16 in')
WHERE Unit = 'in' AND Diameter <= 0.5625;
UPDATE PIPE_TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Compensating 1/2-1 in')
WHERE Unit = 'in' AND Diameter > 0.5625 AND Diameter <= 1;
UPDATE PIPE_TAP SET TappingHead = (SELECT ID FROM TAPPING_HEAD WHERE Name = 'Quick-change 3/4-1-3/4 in')
WHERE Unit = 'in' AND Diameter > 1 AND Diameter <= 1.75;
UPDATE PIPE_TAP SET Holder = (
    SELECT ID FROM HOLDER
    WHERE Kind = 'collet chuck'
      AND Shank_Diameter * CASE Unit WHEN 'in' THEN 25.4 ELSE 1 END BETWEEN Metric_Min_Shank AND Metric_Max_Shank
    ORDER BY ID LIMIT 1);
