-- Feeds and speeds of drilling, reaming and threading.
-- One row per material group (the Material of the stock materials) and Brinell range, both ends inclusive. Ranges may
-- leave gaps and may overlap; the stored queries give a material's rows in ascending order of hardness, which the
-- lookups rely on.
-- STARTING VALUES. They are plausible for rigid machines, sharp tools and coolant, and are meant to be replaced by
-- the shop's own: the column Source tells the two apart, new rows begin as shop values.

-- Drilling: cutting speed, and the factor on the feed that DRILL_FEED gives for the diameter.
CREATE TABLE DRILLING_FS (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Material TEXT(40),
    MinHB SHORT DEFAULT 0,
    MaxHB SHORT DEFAULT 0,
    HSS_Speed DOUBLE,
    Carbide_Speed DOUBLE,
    Feed_Factor DOUBLE,
    Speed_Unit TEXT(20) DEFAULT 'm/min',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX DRILLING_FS_Material ON DRILLING_FS (Material COLLATE NOCASE, MinHB, MaxHB);

CREATE VIEW Q_DRILLING_FS AS
SELECT T.ID AS ID,
       T.Material AS Material,
       T.MinHB AS MinHB,
       T.MaxHB AS MaxHB,
       T.HSS_Speed AS HSS_Speed,
       T.Carbide_Speed AS Carbide_Speed,
       T.Feed_Factor AS Feed_Factor,
       T.Speed_Unit AS Speed_Unit,
       T.Source AS Source
FROM DRILLING_FS AS T
ORDER BY T.Material COLLATE NOCASE, T.MinHB, T.MaxHB;

INSERT INTO DRILLING_FS (Material, MinHB, MaxHB, HSS_Speed, Carbide_Speed, Feed_Factor) VALUES
    ('Alloy steel',                 150, 200,  24,  90, 0.92),
    ('Alloy steel',                 190, 240,  20,  80, 0.92),
    ('Alloy steel',                 240, 290,  16,  70, 0.83),
    ('Alloy steel',                 290, 340,  13,  55, 0.74),
    ('Alloy steel',                 350, 400,   8,  43, 0.74),
    ('Austenitic stainless steel',  135, 185,  17,  65, 0.77),
    ('Austenitic stainless steel',  225, 275,  13,  50, 0.69),
    ('Brass',                        50, 100,  65, 180,  1.3),
    ('Brass',                        90, 160,  50, 155,  1.3),
    ('Bronze',                       60, 120,  34, 110,    1),
    ('Bronze',                      120, 220,  20,  70,    1),
    ('Cast aluminium',               40,  80, 120, 320,  1.3),
    ('Cast aluminium',               70, 125,  95, 250,  1.3),
    ('Copper',                       40, 110,  38, 125, 0.92),
    ('Ductile cast iron',           140, 190,  24,  75, 1.08),
    ('Ductile cast iron',           190, 225,  19,  65, 1.08),
    ('Ductile cast iron',           225, 260,  14,  50, 0.97),
    ('Ductile cast iron',           260, 330,  10,  38, 0.97),
    ('Duplex stainless steel',      220, 290,  11,  46, 0.62),
    ('Ferritic stainless steel',    135, 185,  24,  85, 0.92),
    ('Free-cutting steel',          100, 150,  42, 140, 1.23),
    ('Free-cutting steel',          150, 200,  36, 120, 1.23),
    ('Grey cast iron',              120, 150,  29,  90, 1.23),
    ('Grey cast iron',              160, 200,  23,  75, 1.23),
    ('Grey cast iron',              190, 220,  19,  65, 1.23),
    ('Grey cast iron',              220, 260,  14,  55, 1.11),
    ('Grey cast iron',              250, 320,   9,  42, 1.11),
    ('Low carbon steel',             85, 125,  38, 125, 1.08),
    ('Low carbon steel',            125, 175,  32, 110, 1.08),
    ('Low carbon steel',            175, 225,  27, 100, 1.08),
    ('Magnesium alloy',              40,  90, 155, 420,  1.3),
    ('Malleable cast iron',         110, 160,  32,  90, 1.15),
    ('Malleable cast iron',         160, 200,  24,  75, 1.15),
    ('Malleable cast iron',         200, 240,  17,  60, 1.15),
    ('Martensitic stainless steel', 135, 175,  24,  85, 0.85),
    ('Martensitic stainless steel', 175, 225,  20,  75, 0.85),
    ('Martensitic stainless steel', 275, 325,  13,  50, 0.76),
    ('Martensitic stainless steel', 375, 425,   8,  35, 0.68),
    ('Medium carbon steel',         125, 175,  29, 105,    1),
    ('Medium carbon steel',         175, 225,  24,  90,    1),
    ('Medium carbon steel',         225, 275,  19,  75,  0.9),
    ('Medium carbon steel',         275, 325,  14,  65,  0.9),
    ('Nickel alloy',                140, 220,   8,  22, 0.54),
    ('Nickel alloy',                210, 300,   6,  18, 0.48),
    ('Nickel alloy',                320, 420,   3,  14, 0.43),
    ('PH stainless steel',          275, 325,  13,  50, 0.62),
    ('PH stainless steel',          325, 375,  10,  43, 0.55),
    ('PH stainless steel',          375, 440,   8,  35, 0.55),
    ('Titanium',                    110, 170,  26,  50, 0.77),
    ('Titanium',                    160, 240,  17,  41, 0.77),
    ('Titanium',                    300, 350,   9,  29, 0.62),
    ('Titanium',                    340, 400,   7,  24, 0.62),
    ('Tool steel',                  150, 200,  19,  75, 0.77),
    ('Tool steel',                  200, 250,  14,  65, 0.77),
    ('Tool steel',                  290, 340,  10,  46, 0.62),
    ('Wrought aluminium',            30,  80, 130, 350,  1.3),
    ('Wrought aluminium',            75, 170, 100, 290,  1.3);
UPDATE DRILLING_FS SET Source = 'Starting value';

-- Reaming: cutting speed, and the factor on the feed that DRILL_FEED gives for the diameter.
CREATE TABLE REAMING_FS (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Material TEXT(40),
    MinHB SHORT DEFAULT 0,
    MaxHB SHORT DEFAULT 0,
    HSS_Speed DOUBLE,
    Carbide_Speed DOUBLE,
    Feed_Factor DOUBLE,
    Speed_Unit TEXT(20) DEFAULT 'm/min',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX REAMING_FS_Material ON REAMING_FS (Material COLLATE NOCASE, MinHB, MaxHB);

CREATE VIEW Q_REAMING_FS AS
SELECT T.ID AS ID,
       T.Material AS Material,
       T.MinHB AS MinHB,
       T.MaxHB AS MaxHB,
       T.HSS_Speed AS HSS_Speed,
       T.Carbide_Speed AS Carbide_Speed,
       T.Feed_Factor AS Feed_Factor,
       T.Speed_Unit AS Speed_Unit,
       T.Source AS Source
FROM REAMING_FS AS T
ORDER BY T.Material COLLATE NOCASE, T.MinHB, T.MaxHB;

INSERT INTO REAMING_FS (Material, MinHB, MaxHB, HSS_Speed, Carbide_Speed, Feed_Factor) VALUES
    ('Alloy steel',                 150, 200, 13,  32, 1.85),
    ('Alloy steel',                 190, 240, 11,  29, 1.85),
    ('Alloy steel',                 240, 290,  9,  24, 1.66),
    ('Alloy steel',                 290, 340,  7,  20, 1.48),
    ('Alloy steel',                 350, 400,  4,  16, 1.48),
    ('Austenitic stainless steel',  135, 185,  9,  24, 1.54),
    ('Austenitic stainless steel',  225, 275,  7,  19, 1.38),
    ('Brass',                        50, 100, 34,  65,  2.6),
    ('Brass',                        90, 160, 27,  55,  2.6),
    ('Bronze',                       60, 120, 18,  40,    2),
    ('Bronze',                      120, 220, 11,  25,    2),
    ('Cast aluminium',               40,  80, 65, 110,  2.6),
    ('Cast aluminium',               70, 125, 50,  90,  2.6),
    ('Copper',                       40, 110, 20,  45, 1.85),
    ('Ductile cast iron',           140, 190, 13,  28, 2.15),
    ('Ductile cast iron',           190, 225, 10,  22, 2.15),
    ('Ductile cast iron',           225, 260,  8,  19, 1.94),
    ('Ductile cast iron',           260, 330,  5,  14, 1.94),
    ('Duplex stainless steel',      220, 290,  6,  16, 1.25),
    ('Ferritic stainless steel',    135, 185, 13,  30, 1.85),
    ('Free-cutting steel',          100, 150, 22,  50, 2.46),
    ('Free-cutting steel',          150, 200, 19,  44, 2.46),
    ('Grey cast iron',              120, 150, 15,  32, 2.46),
    ('Grey cast iron',              160, 200, 12,  28, 2.46),
    ('Grey cast iron',              190, 220, 10,  24, 2.46),
    ('Grey cast iron',              220, 260,  8,  20, 2.22),
    ('Grey cast iron',              250, 320,  5,  15, 2.22),
    ('Low carbon steel',             85, 125, 20,  45, 2.15),
    ('Low carbon steel',            125, 175, 17,  40, 2.15),
    ('Low carbon steel',            175, 225, 14,  35, 2.15),
    ('Magnesium alloy',              40,  90, 80, 150,  2.6),
    ('Malleable cast iron',         110, 160, 17,  32, 2.31),
    ('Malleable cast iron',         160, 200, 13,  28, 2.31),
    ('Malleable cast iron',         200, 240,  9,  21, 2.31),
    ('Martensitic stainless steel', 135, 175, 13,  30, 1.69),
    ('Martensitic stainless steel', 175, 225, 11,  26, 1.69),
    ('Martensitic stainless steel', 275, 325,  7,  19, 1.52),
    ('Martensitic stainless steel', 375, 425,  4,  12, 1.35),
    ('Medium carbon steel',         125, 175, 15,  38,    2),
    ('Medium carbon steel',         175, 225, 13,  32,    2),
    ('Medium carbon steel',         225, 275, 10,  28,  1.8),
    ('Medium carbon steel',         275, 325,  8,  22,  1.8),
    ('Nickel alloy',                140, 220,  4,   8, 1.08),
    ('Nickel alloy',                210, 300,  3,   6, 0.97),
    ('Nickel alloy',                320, 420,  2,   5, 0.86),
    ('PH stainless steel',          275, 325,  7,  19, 1.25),
    ('PH stainless steel',          325, 375,  5,  16, 1.11),
    ('PH stainless steel',          375, 440,  4,  12, 1.11),
    ('Titanium',                    110, 170, 14,  19, 1.54),
    ('Titanium',                    160, 240,  9,  14, 1.54),
    ('Titanium',                    300, 350,  5,  10, 1.23),
    ('Titanium',                    340, 400,  4,   8, 1.23),
    ('Tool steel',                  150, 200, 10,  26, 1.54),
    ('Tool steel',                  200, 250,  8,  22, 1.54),
    ('Tool steel',                  290, 340,  5,  16, 1.23),
    ('Wrought aluminium',            30,  80, 70, 125,  2.6),
    ('Wrought aluminium',            75, 170, 55, 105,  2.6);
UPDATE REAMING_FS SET Source = 'Starting value';

-- Threading: cutting speed of taps and of carbide thread mills. The feed of a tap is its pitch.
CREATE TABLE THREADING_FS (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Material TEXT(40),
    MinHB SHORT DEFAULT 0,
    MaxHB SHORT DEFAULT 0,
    HSS_Tap_Speed DOUBLE,
    Coated_Tap_Speed DOUBLE,
    Thread_Mill_Speed DOUBLE,
    Thread_Mill_Feed DOUBLE,
    Speed_Unit TEXT(20) DEFAULT 'm/min',
    Feed_Unit TEXT(20) DEFAULT 'mm/tooth',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX THREADING_FS_Material ON THREADING_FS (Material COLLATE NOCASE, MinHB, MaxHB);

CREATE VIEW Q_THREADING_FS AS
SELECT T.ID AS ID,
       T.Material AS Material,
       T.MinHB AS MinHB,
       T.MaxHB AS MaxHB,
       T.HSS_Tap_Speed AS HSS_Tap_Speed,
       T.Coated_Tap_Speed AS Coated_Tap_Speed,
       T.Thread_Mill_Speed AS Thread_Mill_Speed,
       T.Thread_Mill_Feed AS Thread_Mill_Feed,
       T.Speed_Unit AS Speed_Unit,
       T.Feed_Unit AS Feed_Unit,
       T.Source AS Source
FROM THREADING_FS AS T
ORDER BY T.Material COLLATE NOCASE, T.MinHB, T.MaxHB;

INSERT INTO THREADING_FS (Material, MinHB, MaxHB, HSS_Tap_Speed, Coated_Tap_Speed, Thread_Mill_Speed,
    Thread_Mill_Feed) VALUES
    ('Alloy steel',                 150, 200, 10, 17, 100, 0.036),
    ('Alloy steel',                 190, 240,  8, 14,  85, 0.036),
    ('Alloy steel',                 240, 290,  7, 11,  75, 0.032),
    ('Alloy steel',                 290, 340,  5,  9,  60, 0.029),
    ('Alloy steel',                 350, 400,  4,  6,  46, 0.029),
    ('Austenitic stainless steel',  135, 185,  7, 12,  70,  0.03),
    ('Austenitic stainless steel',  225, 275,  5,  9,  55, 0.027),
    ('Brass',                        50, 100, 26, 45, 195, 0.054),
    ('Brass',                        90, 160, 21, 36, 165, 0.054),
    ('Bronze',                       60, 120, 14, 24, 120, 0.039),
    ('Bronze',                      120, 220,  8, 14,  75, 0.039),
    ('Cast aluminium',               40,  80, 30, 50, 340,  0.06),
    ('Cast aluminium',               70, 125, 30, 50, 270,  0.06),
    ('Copper',                       40, 110, 16, 27, 135, 0.036),
    ('Ductile cast iron',           140, 190, 10, 17,  80, 0.042),
    ('Ductile cast iron',           190, 225,  8, 13,  70, 0.042),
    ('Ductile cast iron',           225, 260,  6, 10,  55, 0.038),
    ('Ductile cast iron',           260, 330,  4,  7,  41, 0.038),
    ('Duplex stainless steel',      220, 290,  5,  8,  49, 0.024),
    ('Ferritic stainless steel',    135, 185, 10, 17,  90, 0.036),
    ('Free-cutting steel',          100, 150, 18, 30, 150, 0.048),
    ('Free-cutting steel',          150, 200, 15, 25, 130, 0.048),
    ('Grey cast iron',              120, 150, 12, 20, 100, 0.048),
    ('Grey cast iron',              160, 200,  9, 16,  80, 0.048),
    ('Grey cast iron',              190, 220,  8, 13,  70, 0.048),
    ('Grey cast iron',              220, 260,  6, 10,  60, 0.043),
    ('Grey cast iron',              250, 320,  4,  7,  45, 0.043),
    ('Low carbon steel',             85, 125, 16, 27, 135, 0.042),
    ('Low carbon steel',            125, 175, 13, 23, 120, 0.042),
    ('Low carbon steel',            175, 225, 11, 19, 105, 0.042),
    ('Magnesium alloy',              40,  90, 30, 50, 450, 0.072),
    ('Malleable cast iron',         110, 160, 13, 23, 100, 0.045),
    ('Malleable cast iron',         160, 200, 10, 17,  80, 0.045),
    ('Malleable cast iron',         200, 240,  7, 12,  65, 0.045),
    ('Martensitic stainless steel', 135, 175, 10, 17,  90, 0.033),
    ('Martensitic stainless steel', 175, 225,  8, 14,  80, 0.033),
    ('Martensitic stainless steel', 275, 325,  5,  9,  55,  0.03),
    ('Martensitic stainless steel', 375, 425,  3,  5,  38, 0.026),
    ('Medium carbon steel',         125, 175, 12, 20, 110, 0.039),
    ('Medium carbon steel',         175, 225, 10, 17, 100, 0.039),
    ('Medium carbon steel',         225, 275,  8, 13,  80, 0.035),
    ('Medium carbon steel',         275, 325,  6, 10,  70, 0.035),
    ('Nickel alloy',                140, 220,  4,  6,  24, 0.021),
    ('Nickel alloy',                210, 300,  2,  4,  20, 0.019),
    ('Nickel alloy',                320, 420,  2,  3,  15, 0.017),
    ('PH stainless steel',          275, 325,  5,  9,  55, 0.024),
    ('PH stainless steel',          325, 375,  4,  7,  46, 0.022),
    ('PH stainless steel',          375, 440,  3,  5,  38, 0.022),
    ('Titanium',                    110, 170, 10, 18,  55,  0.03),
    ('Titanium',                    160, 240,  7, 12,  44,  0.03),
    ('Titanium',                    300, 350,  4,  7,  32, 0.024),
    ('Titanium',                    340, 400,  3,  5,  26, 0.024),
    ('Tool steel',                  150, 200,  8, 13,  80,  0.03),
    ('Tool steel',                  200, 250,  6, 10,  70,  0.03),
    ('Tool steel',                  290, 340,  4,  7,  49, 0.024),
    ('Wrought aluminium',            30,  80, 30, 50, 380,  0.06),
    ('Wrought aluminium',            75, 170, 30, 50, 320,  0.06);
UPDATE THREADING_FS SET Source = 'Starting value';

-- Feed of twist drills by diameter, in a material of medium strength. Neighbouring ranges share their ends: a diameter
-- on a shared end belongs to the smaller range.
CREATE TABLE DRILL_FEED (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    MinDiameter DOUBLE,
    MaxDiameter DOUBLE,
    Diameter_Unit TEXT(20) DEFAULT 'mm',
    Min_Feed DOUBLE,
    Feed DOUBLE,
    Max_Feed DOUBLE,
    Feed_Unit TEXT(20) DEFAULT 'mm/rev',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX DRILL_FEED_MinDiameter ON DRILL_FEED (MinDiameter, MaxDiameter);

CREATE VIEW Q_DRILL_FEED AS
SELECT T.ID AS ID,
       T.MinDiameter AS MinDiameter,
       T.MaxDiameter AS MaxDiameter,
       T.Diameter_Unit AS Diameter_Unit,
       T.Min_Feed AS Min_Feed,
       T.Feed AS Feed,
       T.Max_Feed AS Max_Feed,
       T.Feed_Unit AS Feed_Unit,
       T.Source AS Source
FROM DRILL_FEED AS T
ORDER BY T.MinDiameter, T.MaxDiameter;

INSERT INTO DRILL_FEED (MinDiameter, MaxDiameter, Min_Feed, Feed, Max_Feed) VALUES
    (0.5,  1, 0.01, 0.015, 0.02),
    (  1,  2, 0.02,  0.03, 0.05),
    (  2,  3, 0.04,  0.05, 0.07),
    (  3,  4, 0.05,  0.08,  0.1),
    (  4,  6, 0.08,   0.1, 0.14),
    (  6,  8,  0.1,  0.14, 0.18),
    (  8, 10, 0.12,  0.17, 0.22),
    ( 10, 12, 0.15,   0.2, 0.26),
    ( 12, 16, 0.18,  0.24,  0.3),
    ( 16, 20, 0.22,  0.28, 0.35),
    ( 20, 25, 0.25,  0.32,  0.4),
    ( 25, 32, 0.28,  0.36, 0.46),
    ( 32, 40,  0.3,   0.4, 0.52),
    ( 40, 50, 0.35,  0.45,  0.6);
UPDATE DRILL_FEED SET Source = 'Starting value';
