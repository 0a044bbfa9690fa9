-- Tapping heads. Min_Diameter and Max_Diameter are the taps that the head takes, both ends inclusive, in the unit
-- of the row like its lengths; the AUX_Metric_ columns hold the same range in millimetres, which is what heads are
-- chosen by. The ranges of the heads overlap, so that most taps have a choice of heads.
-- Retraction_Ratio is the speed of the way out over the speed of the way in.
-- The stored query shows the key as "TAPPING_HEAD.ID": that is the name hosts read the identifier by.

CREATE TABLE TAPPING_HEAD (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Description TEXT(255),
    Min_Diameter DOUBLE DEFAULT 3,
    Max_Diameter DOUBLE DEFAULT 12,
    Unit TEXT(2) DEFAULT 'mm',
    Shank_Type TEXT(40) DEFAULT 'Straight shank',
    Gauge_Length DOUBLE DEFAULT 80,
    Approach_Height DOUBLE DEFAULT 5,
    Retraction_Height DOUBLE DEFAULT 10,
    Extra_Depth DOUBLE DEFAULT 2,
    Retraction_Ratio DOUBLE DEFAULT 1,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Min_Diameter DOUBLE AS (round(Min_Diameter * iif(Unit = 'mm', 1, 25.4), 6)),
    AUX_Metric_Max_Diameter DOUBLE AS (round(Max_Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX TAPPING_HEAD_Name ON TAPPING_HEAD (Name COLLATE NOCASE);

CREATE VIEW Q_TAPPING_HEAD AS
SELECT T.ID AS "TAPPING_HEAD.ID",
       T.Name AS Name,
       T.Description AS Description,
       T.Min_Diameter AS Min_Diameter,
       T.Max_Diameter AS Max_Diameter,
       T.Unit AS Unit,
       T.Shank_Type AS Shank_Type,
       T.Gauge_Length AS Gauge_Length,
       T.Approach_Height AS Approach_Height,
       T.Retraction_Height AS Retraction_Height,
       T.Extra_Depth AS Extra_Depth,
       T.Retraction_Ratio AS Retraction_Ratio,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Min_Diameter AS AUX_Metric_Min_Diameter,
       T.AUX_Metric_Max_Diameter AS AUX_Metric_Max_Diameter
FROM TAPPING_HEAD AS T;

-- Metric heads
INSERT INTO TAPPING_HEAD (ID, Name, Min_Diameter, Max_Diameter, Unit, Shank_Type, Gauge_Length,
    Approach_Height, Retraction_Height, Extra_Depth, Retraction_Ratio) VALUES
    ( 1, 'Synchro M1-M6',         1,  6, 'mm', 'Straight 16 mm',  58, 2,  4, 0.5,  1.5),
    ( 2, 'Synchro M3-M12',        3, 12, 'mm', 'Straight 20 mm',  72, 2,  5,   1,  1.5),
    ( 3, 'Synchro M8-M20',        8, 20, 'mm', 'Straight 25 mm',  98, 3,  6,   1,  1.2),
    ( 4, 'Compensating M3-M8',    3,  8, 'mm', 'Straight 20 mm',  80, 4,  8, 1.5,    1),
    ( 5, 'Compensating M8-M12',   8, 12, 'mm', 'Straight 20 mm',  92, 5, 10,   2,    1),
    ( 6, 'Compensating M8-M20',   8, 20, 'mm', 'Taper 40',       115, 6, 12, 2.5,    1),
    ( 7, 'Compensating M14-M33', 14, 33, 'mm', 'Taper 50',       154, 8, 16,   4,    1),
    ( 8, 'Reversing M1-M4',       1,  4, 'mm', 'Morse taper 1',   90, 3,  5,   1, 1.75),
    ( 9, 'Reversing M2-M7',       2,  7, 'mm', 'Morse taper 2',  105, 4,  6,   1, 1.75),
    (10, 'Reversing M5-M12',      5, 12, 'mm', 'Morse taper 2',  124, 5,  8, 1.5, 1.75),
    (11, 'Reversing M8-M20',      8, 20, 'mm', 'Morse taper 3',  165, 6, 10,   2,  1.5),
    (12, 'Quick-change M3-M14',   3, 14, 'mm', 'Taper 40',        96, 5, 10,   2,    1),
    (13, 'Quick-change M14-M24', 14, 24, 'mm', 'Taper 40',       132, 6, 12,   3,    1),
    (14, 'Quick-change M22-M48', 22, 48, 'mm', 'Taper 50',       178, 8, 16,   4,    1);

-- Inch heads
INSERT INTO TAPPING_HEAD (ID, Name, Min_Diameter, Max_Diameter, Unit, Shank_Type, Gauge_Length,
    Approach_Height, Retraction_Height, Extra_Depth, Retraction_Ratio) VALUES
    (15, 'Synchro #0-1/4 in',            0.06,   0.25, 'in', 'Straight 3/4 in',    2.5, 0.08, 0.16, 0.03,  1.5),
    (16, 'Synchro #6-1/2 in',           0.138,    0.5, 'in', 'Straight 3/4 in',      3, 0.08,  0.2, 0.04,  1.5),
    (17, 'Compensating #8-9/16 in',     0.164, 0.5625, 'in', 'Straight 1 in',      3.6,  0.2,  0.4, 0.08,    1),
    (18, 'Compensating 1/2-1 in',         0.5,      1, 'in', 'Straight 1-1/4 in',  5.1, 0.25,  0.5,  0.1,    1),
    (19, 'Reversing #0-#10',             0.06,   0.19, 'in', 'Jacobs taper 6',    3.75, 0.12,  0.2, 0.04, 1.75),
    (20, 'Reversing #8-1/2 in',         0.164,    0.5, 'in', 'Jacobs taper 33',    4.9,  0.2,  0.3, 0.06, 1.75),
    (21, 'Quick-change 3/4-1-3/4 in',    0.75,   1.75, 'in', 'Taper 50',           6.4,  0.3,  0.6, 0.15,    1),
    (22, 'Quick-change 1-1/4-3-1/2 in',  1.25,    3.5, 'in', 'Taper 50',          8.75,  0.4,  0.8,  0.2,    1);

UPDATE TAPPING_HEAD SET IsFavorite = -1 WHERE Name IN ('Synchro M3-M12', 'Synchro #6-1/2 in');
UPDATE TAPPING_HEAD SET Description = 'Synchronous chuck with minimum compensation' WHERE Name LIKE 'Synchro %';
UPDATE TAPPING_HEAD SET Description = 'Length compensation both ways' WHERE Name LIKE 'Compensating %';
UPDATE TAPPING_HEAD SET Description = 'Self-reversing head' WHERE Name LIKE 'Reversing %';
UPDATE TAPPING_HEAD SET Description = 'Quick-change chuck with torque limit' WHERE Name LIKE 'Quick-change %';
