-- Factor tables. The second column of each stored query is the key that is searched; the stored queries give the rows
-- in ascending order of it. A value between two keys is for the host to interpolate.
-- STARTING VALUES. They are plausible for rigid machines, sharp tools and coolant, and are meant to be replaced by
-- the shop's own: the column Source tells the two apart, new rows begin as shop values.

-- Speed factor of turning by depth of cut, 1 at 3 mm.
CREATE TABLE T5_DEPTH (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Depth DOUBLE,
    Speed_Factor DOUBLE,
    Depth_Unit TEXT(20) DEFAULT 'mm',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T5_DEPTH_Depth ON T5_DEPTH (Depth);

CREATE VIEW Q_T5_DEPTH AS
SELECT T.ID AS ID,
       T.Depth AS Depth,
       T.Speed_Factor AS Speed_Factor,
       T.Depth_Unit AS Depth_Unit,
       T.Source AS Source
FROM T5_DEPTH AS T
ORDER BY T.Depth;

INSERT INTO T5_DEPTH (Depth, Speed_Factor) VALUES
    (0.25, 1.42),
    ( 0.5, 1.29),
    (   1, 1.17),
    ( 1.5,  1.1),
    (   2, 1.06),
    (   3,    1),
    (   4, 0.96),
    (   5, 0.93),
    (   6, 0.91),
    (   8, 0.87),
    (  10, 0.84),
    (  12, 0.82),
    (  15,  0.8);
UPDATE T5_DEPTH SET Source = 'Starting value';

-- Speed factor of turning by feed, 1 at 0.3 mm/rev.
CREATE TABLE T5_FEED (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Feed DOUBLE,
    Speed_Factor DOUBLE,
    Feed_Unit TEXT(20) DEFAULT 'mm/rev',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T5_FEED_Feed ON T5_FEED (Feed);

CREATE VIEW Q_T5_FEED AS
SELECT T.ID AS ID,
       T.Feed AS Feed,
       T.Speed_Factor AS Speed_Factor,
       T.Feed_Unit AS Feed_Unit,
       T.Source AS Source
FROM T5_FEED AS T
ORDER BY T.Feed;

INSERT INTO T5_FEED (Feed, Speed_Factor) VALUES
    (0.05, 1.77),
    (0.08, 1.53),
    ( 0.1, 1.42),
    (0.15, 1.25),
    ( 0.2, 1.14),
    (0.25, 1.06),
    ( 0.3,    1),
    (0.35, 0.95),
    ( 0.4, 0.91),
    ( 0.5, 0.85),
    ( 0.6,  0.8),
    ( 0.8, 0.73),
    (   1, 0.68);
UPDATE T5_FEED SET Source = 'Starting value';

-- Speed factors by the ratio of the chosen feed to the tabled feed: less feed allows more speed.
CREATE TABLE T15b_15d_22 (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Feed_Ratio DOUBLE,
    End_Mill_Factor DOUBLE,
    Face_Mill_Factor DOUBLE,
    HSS_Factor DOUBLE,
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T15b_15d_22_Feed_Ratio ON T15b_15d_22 (Feed_Ratio);

CREATE VIEW Q_T15b_15d_22 AS
SELECT T.ID AS ID,
       T.Feed_Ratio AS Feed_Ratio,
       T.End_Mill_Factor AS End_Mill_Factor,
       T.Face_Mill_Factor AS Face_Mill_Factor,
       T.HSS_Factor AS HSS_Factor,
       T.Source AS Source
FROM T15b_15d_22 AS T
ORDER BY T.Feed_Ratio;

INSERT INTO T15b_15d_22 (Feed_Ratio, End_Mill_Factor, Face_Mill_Factor, HSS_Factor) VALUES
    (0.1, 1.91, 1.66, 2.24),
    (0.2, 1.57, 1.42, 1.76),
    (0.3,  1.4,  1.3, 1.52),
    (0.4, 1.29, 1.22, 1.38),
    (0.5, 1.21, 1.16, 1.27),
    (0.6, 1.15, 1.12,  1.2),
    (0.7, 1.11, 1.08, 1.13),
    (0.8, 1.06, 1.05, 1.08),
    (0.9, 1.03, 1.02, 1.04),
    (  1,    1,    1,    1);
UPDATE T15b_15d_22 SET Source = 'Starting value';

-- Milling at less than full width: factors by radial depth over cutter diameter. Feed_Factor makes up for the
-- thinner chip, Speed_Factor for the shorter time in the cut.
CREATE TABLE T15c (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Depth_Ratio DOUBLE,
    Speed_Factor DOUBLE,
    Feed_Factor DOUBLE,
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T15c_Depth_Ratio ON T15c (Depth_Ratio);

CREATE VIEW Q_T15c AS
SELECT T.ID AS ID,
       T.Depth_Ratio AS Depth_Ratio,
       T.Speed_Factor AS Speed_Factor,
       T.Feed_Factor AS Feed_Factor,
       T.Source AS Source
FROM T15c AS T
ORDER BY T.Depth_Ratio;

INSERT INTO T15c (Depth_Ratio, Speed_Factor, Feed_Factor) VALUES
    (0.02, 1.73, 3.57),
    (0.05, 1.48, 2.29),
    ( 0.1, 1.31, 1.67),
    (0.15, 1.23,  1.4),
    ( 0.2, 1.17, 1.25),
    (0.25, 1.13, 1.15),
    ( 0.3, 1.09, 1.09),
    ( 0.4, 1.04, 1.02),
    ( 0.5,    1,    1),
    ( 0.6, 0.97,    1),
    (0.75, 0.93,    1),
    (   1, 0.89,    1);
UPDATE T15c SET Source = 'Starting value';

-- Factor of the cutting power by feed per revolution or per tooth, 1 at 0.25 mm: thin chips cost more.
CREATE TABLE T25 (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Feed DOUBLE,
    Power_Factor DOUBLE,
    Feed_Unit TEXT(20) DEFAULT 'mm',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T25_Feed ON T25 (Feed);

CREATE VIEW Q_T25 AS
SELECT T.ID AS ID,
       T.Feed AS Feed,
       T.Power_Factor AS Power_Factor,
       T.Feed_Unit AS Feed_Unit,
       T.Source AS Source
FROM T25 AS T
ORDER BY T.Feed;

INSERT INTO T25 (Feed, Power_Factor) VALUES
    (0.02, 1.66),
    (0.03, 1.53),
    (0.05, 1.38),
    (0.07, 1.29),
    ( 0.1,  1.2),
    (0.12, 1.16),
    (0.15, 1.11),
    (0.18, 1.07),
    ( 0.2, 1.05),
    (0.25,    1),
    ( 0.3, 0.96),
    (0.35, 0.93),
    ( 0.4, 0.91),
    ( 0.5, 0.87),
    ( 0.6, 0.84),
    ( 0.7, 0.81),
    ( 0.8, 0.79),
    (   1, 0.76),
    (1.25, 0.72),
    ( 1.5,  0.7);
UPDATE T25 SET Source = 'Starting value';

-- Factor of drill thrust and torque by feed, 1 at 0.25 mm/rev.
CREATE TABLE T33 (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Feed DOUBLE,
    Force_Factor DOUBLE,
    Feed_Unit TEXT(20) DEFAULT 'mm/rev',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T33_Feed ON T33 (Feed);

CREATE VIEW Q_T33 AS
SELECT T.ID AS ID,
       T.Feed AS Feed,
       T.Force_Factor AS Force_Factor,
       T.Feed_Unit AS Feed_Unit,
       T.Source AS Source
FROM T33 AS T
ORDER BY T.Feed;

INSERT INTO T33 (Feed, Force_Factor) VALUES
    (0.02, 0.133),
    (0.03, 0.183),
    (0.05, 0.276),
    (0.07, 0.361),
    ( 0.1,  0.48),
    (0.12, 0.556),
    (0.15, 0.665),
    (0.18, 0.769),
    ( 0.2, 0.837),
    (0.25,     1),
    ( 0.3, 1.157),
    (0.35, 1.309),
    ( 0.4, 1.456),
    ( 0.5, 1.741),
    ( 0.6, 2.015),
    ( 0.8, 2.536);
UPDATE T33 SET Source = 'Starting value';

-- Factors of drill thrust and torque by drill diameter, 1 at 10 mm.
CREATE TABLE T34 (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Diameter DOUBLE,
    Thrust_Factor DOUBLE,
    Torque_Factor DOUBLE,
    Diameter_Unit TEXT(20) DEFAULT 'mm',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T34_Diameter ON T34 (Diameter);

CREATE VIEW Q_T34 AS
SELECT T.ID AS ID,
       T.Diameter AS Diameter,
       T.Thrust_Factor AS Thrust_Factor,
       T.Torque_Factor AS Torque_Factor,
       T.Diameter_Unit AS Diameter_Unit,
       T.Source AS Source
FROM T34 AS T
ORDER BY T.Diameter;

INSERT INTO T34 (Diameter, Thrust_Factor, Torque_Factor) VALUES
    (  1, 0.158,  0.016),
    (1.6, 0.231,  0.037),
    (2.5,  0.33,  0.082),
    (  3, 0.382,  0.115),
    (  4,  0.48,  0.192),
    (  5, 0.574,  0.287),
    (  6, 0.665,  0.399),
    (  8, 0.837,  0.669),
    ( 10,     1,      1),
    ( 12, 1.157,  1.388),
    ( 16, 1.456,   2.33),
    ( 20, 1.741,  3.482),
    ( 25, 2.081,  5.203),
    ( 32, 2.536,  8.115),
    ( 40, 3.031, 12.126),
    ( 50, 3.624, 18.119);
UPDATE T34 SET Source = 'Starting value';
