-- Turning and boring, and the constants of cutting power.
-- One row per material group (the Material of the stock materials) and Brinell range, both ends inclusive. Ranges may
-- leave gaps and may overlap; the stored queries give a material's rows in ascending order of hardness, which the
-- lookups rely on.
-- STARTING VALUES. They are plausible for rigid machines, sharp tools and coolant, and are meant to be replaced by
-- the shop's own: the column Source tells the two apart, new rows begin as shop values.

-- Turning and boring with a single point: cutting speed and feed per revolution.
CREATE TABLE RECOMMENDED_FS (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Material TEXT(40),
    MinHB SHORT DEFAULT 0,
    MaxHB SHORT DEFAULT 0,
    HSS_Speed DOUBLE,
    Carbide_Speed DOUBLE,
    Roughing_Feed DOUBLE,
    Finishing_Feed DOUBLE,
    Speed_Unit TEXT(20) DEFAULT 'm/min',
    Feed_Unit TEXT(20) DEFAULT 'mm/rev',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX RECOMMENDED_FS_Material ON RECOMMENDED_FS (Material COLLATE NOCASE, MinHB, MaxHB);

CREATE VIEW Q_RECOMMENDED_FS AS
SELECT T.ID AS ID,
       T.Material AS Material,
       T.MinHB AS MinHB,
       T.MaxHB AS MaxHB,
       T.HSS_Speed AS HSS_Speed,
       T.Carbide_Speed AS Carbide_Speed,
       T.Roughing_Feed AS Roughing_Feed,
       T.Finishing_Feed AS Finishing_Feed,
       T.Speed_Unit AS Speed_Unit,
       T.Feed_Unit AS Feed_Unit,
       T.Source AS Source
FROM RECOMMENDED_FS AS T
ORDER BY T.Material COLLATE NOCASE, T.MinHB, T.MaxHB;

INSERT INTO RECOMMENDED_FS (Material, MinHB, MaxHB, HSS_Speed, Carbide_Speed, Roughing_Feed, Finishing_Feed) VALUES
    ('Alloy steel',                 150, 200,  32, 160, 0.25,  0.1),
    ('Alloy steel',                 190, 240,  28, 145, 0.25,  0.1),
    ('Alloy steel',                 240, 290,  22, 120, 0.23, 0.09),
    ('Alloy steel',                 290, 340,  17, 100,  0.2, 0.08),
    ('Alloy steel',                 350, 400,  12,  80,  0.2, 0.08),
    ('Austenitic stainless steel',  135, 185,  23, 120,  0.2, 0.08),
    ('Austenitic stainless steel',  225, 275,  17,  95, 0.18, 0.07),
    ('Brass',                        50, 100,  85, 320, 0.25,  0.1),
    ('Brass',                        90, 160,  70, 280, 0.25,  0.1),
    ('Bronze',                       60, 120,  46, 200,  0.2, 0.08),
    ('Bronze',                      120, 220,  28, 125,  0.2, 0.08),
    ('Cast aluminium',               40,  80, 160, 560,  0.3, 0.12),
    ('Cast aluminium',               70, 125, 125, 450,  0.3, 0.12),
    ('Copper',                       40, 110,  50, 220,  0.2, 0.08),
    ('Ductile cast iron',           140, 190,  32, 140, 0.25,  0.1),
    ('Ductile cast iron',           190, 225,  25, 110, 0.25,  0.1),
    ('Ductile cast iron',           225, 260,  20,  95, 0.23, 0.09),
    ('Ductile cast iron',           260, 330,  14,  70, 0.23, 0.09),
    ('Duplex stainless steel',      220, 290,  15,  80, 0.18, 0.07),
    ('Ferritic stainless steel',    135, 185,  32, 150, 0.25,  0.1),
    ('Free-cutting steel',          100, 150,  55, 250,  0.3, 0.12),
    ('Free-cutting steel',          150, 200,  48, 220,  0.3, 0.12),
    ('Grey cast iron',              120, 150,  39, 160,  0.3, 0.12),
    ('Grey cast iron',              160, 200,  31, 140,  0.3, 0.12),
    ('Grey cast iron',              190, 220,  25, 120,  0.3, 0.12),
    ('Grey cast iron',              220, 260,  20, 100, 0.27, 0.11),
    ('Grey cast iron',              250, 320,  13,  75, 0.27, 0.11),
    ('Low carbon steel',             85, 125,  50, 220,  0.3, 0.12),
    ('Low carbon steel',            125, 175,  44, 200,  0.3, 0.12),
    ('Low carbon steel',            175, 225,  37, 175,  0.3, 0.12),
    ('Magnesium alloy',              40,  90, 210, 750, 0.35, 0.14),
    ('Malleable cast iron',         110, 160,  44, 160, 0.25,  0.1),
    ('Malleable cast iron',         160, 200,  32, 140, 0.25,  0.1),
    ('Malleable cast iron',         200, 240,  23, 105, 0.25,  0.1),
    ('Martensitic stainless steel', 135, 175,  32, 150,  0.2, 0.08),
    ('Martensitic stainless steel', 175, 225,  28, 130,  0.2, 0.08),
    ('Martensitic stainless steel', 275, 325,  17,  95, 0.18, 0.07),
    ('Martensitic stainless steel', 375, 425,  10,  60, 0.16, 0.06),
    ('Medium carbon steel',         125, 175,  39, 190, 0.25,  0.1),
    ('Medium carbon steel',         175, 225,  32, 160, 0.25,  0.1),
    ('Medium carbon steel',         225, 275,  25, 140, 0.23, 0.09),
    ('Medium carbon steel',         275, 325,  20, 110, 0.23, 0.09),
    ('Nickel alloy',                140, 220,  12,  40, 0.15, 0.06),
    ('Nickel alloy',                210, 300,   8,  32, 0.14, 0.05),
    ('Nickel alloy',                320, 420,   5,  25, 0.12, 0.05),
    ('PH stainless steel',          275, 325,  17,  95, 0.18, 0.07),
    ('PH stainless steel',          325, 375,  14,  80, 0.16, 0.06),
    ('PH stainless steel',          375, 440,  10,  60, 0.16, 0.06),
    ('Titanium',                    110, 170,  34,  95, 0.18, 0.07),
    ('Titanium',                    160, 240,  23,  70, 0.18, 0.07),
    ('Titanium',                    300, 350,  13,  50, 0.14, 0.06),
    ('Titanium',                    340, 400,   9,  42, 0.14, 0.06),
    ('Tool steel',                  150, 200,  25, 130,  0.2, 0.08),
    ('Tool steel',                  200, 250,  20, 110,  0.2, 0.08),
    ('Tool steel',                  290, 340,  14,  80, 0.16, 0.06),
    ('Wrought aluminium',            30,  80, 170, 620,  0.3, 0.12),
    ('Wrought aluminium',            75, 170, 140, 520,  0.3, 0.12);
UPDATE RECOMMENDED_FS SET Source = 'Starting value';

-- Power and drilling force: Power_Constant is the power per volume rate, Drill_Factor scales thrust and torque of
-- drills, Wear_Factor allows for the worn edge, Efficiency is that of the spindle drive.
CREATE TABLE T24_27_30_31 (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Material TEXT(40),
    MinHB SHORT DEFAULT 0,
    MaxHB SHORT DEFAULT 0,
    Power_Constant DOUBLE,
    Drill_Factor DOUBLE,
    Wear_Factor DOUBLE,
    Efficiency DOUBLE,
    Power_Unit TEXT(20) DEFAULT 'kW/(cm3/s)',
    Source TEXT(40) DEFAULT 'Shop value'
);
CREATE INDEX T24_27_30_31_Material ON T24_27_30_31 (Material COLLATE NOCASE, MinHB, MaxHB);

CREATE VIEW Q_T24_27_30_31 AS
SELECT T.ID AS ID,
       T.Material AS Material,
       T.MinHB AS MinHB,
       T.MaxHB AS MaxHB,
       T.Power_Constant AS Power_Constant,
       T.Drill_Factor AS Drill_Factor,
       T.Wear_Factor AS Wear_Factor,
       T.Efficiency AS Efficiency,
       T.Power_Unit AS Power_Unit,
       T.Source AS Source
FROM T24_27_30_31 AS T
ORDER BY T.Material COLLATE NOCASE, T.MinHB, T.MaxHB;

INSERT INTO T24_27_30_31 (Material, MinHB, MaxHB, Power_Constant, Drill_Factor, Wear_Factor, Efficiency) VALUES
    ('Alloy steel',                 150, 200, 1.75,  1.4, 1.25, 0.8),
    ('Alloy steel',                 190, 240,  1.9,  1.5, 1.35, 0.8),
    ('Alloy steel',                 240, 290,  2.1, 1.65, 1.35, 0.8),
    ('Alloy steel',                 290, 340,  2.3, 1.85, 1.35, 0.8),
    ('Alloy steel',                 350, 400, 2.55, 2.05, 1.35, 0.8),
    ('Austenitic stainless steel',  135, 185, 1.95,  1.6, 1.35, 0.8),
    ('Austenitic stainless steel',  225, 275,  2.1,  1.8, 1.35, 0.8),
    ('Brass',                        50, 100, 0.75,  0.6, 1.25, 0.8),
    ('Brass',                        90, 160, 0.85,  0.7, 1.25, 0.8),
    ('Bronze',                       60, 120, 0.95,  0.8, 1.25, 0.8),
    ('Bronze',                      120, 220,  1.2, 1.05, 1.35, 0.8),
    ('Cast aluminium',               40,  80,  0.6,  0.5, 1.25, 0.8),
    ('Cast aluminium',               70, 125, 0.65, 0.55, 1.25, 0.8),
    ('Copper',                       40, 110,  1.2,    1, 1.25, 0.8),
    ('Ductile cast iron',           140, 190,  1.2,  1.1, 1.25, 0.8),
    ('Ductile cast iron',           190, 225,  1.4, 1.25, 1.35, 0.8),
    ('Ductile cast iron',           225, 260,  1.6,  1.4, 1.35, 0.8),
    ('Ductile cast iron',           260, 330, 1.85,  1.6, 1.35, 0.8),
    ('Duplex stainless steel',      220, 290,  2.2,  1.9, 1.35, 0.8),
    ('Ferritic stainless steel',    135, 185,  1.8,  1.4, 1.25, 0.8),
    ('Free-cutting steel',          100, 150,  1.5,    1, 1.25, 0.8),
    ('Free-cutting steel',          150, 200, 1.65,  1.1, 1.25, 0.8),
    ('Grey cast iron',              120, 150, 0.95,  0.8, 1.25, 0.8),
    ('Grey cast iron',              160, 200,  1.1, 0.95, 1.25, 0.8),
    ('Grey cast iron',              190, 220, 1.25, 1.05, 1.35, 0.8),
    ('Grey cast iron',              220, 260, 1.45,  1.2, 1.35, 0.8),
    ('Grey cast iron',              250, 320, 1.65, 1.35, 1.35, 0.8),
    ('Low carbon steel',             85, 125,  1.6,  1.1, 1.25, 0.8),
    ('Low carbon steel',            125, 175,  1.7,  1.2, 1.25, 0.8),
    ('Low carbon steel',            175, 225, 1.85,  1.3, 1.25, 0.8),
    ('Magnesium alloy',              40,  90,  0.4, 0.35, 1.25, 0.8),
    ('Malleable cast iron',         110, 160,  1.1,  0.9, 1.25, 0.8),
    ('Malleable cast iron',         160, 200, 1.25, 1.05, 1.25, 0.8),
    ('Malleable cast iron',         200, 240, 1.45,  1.2, 1.35, 0.8),
    ('Martensitic stainless steel', 135, 175, 1.75,  1.4, 1.25, 0.8),
    ('Martensitic stainless steel', 175, 225,  1.9,  1.5, 1.35, 0.8),
    ('Martensitic stainless steel', 275, 325,  2.2,  1.8, 1.35, 0.8),
    ('Martensitic stainless steel', 375, 425, 2.55,  2.1, 1.35, 0.8),
    ('Medium carbon steel',         125, 175,  1.7,  1.3, 1.25, 0.8),
    ('Medium carbon steel',         175, 225, 1.85,  1.4, 1.25, 0.8),
    ('Medium carbon steel',         225, 275, 2.05, 1.55, 1.35, 0.8),
    ('Medium carbon steel',         275, 325, 2.25,  1.7, 1.35, 0.8),
    ('Nickel alloy',                140, 220,  2.4,  2.1, 1.35, 0.8),
    ('Nickel alloy',                210, 300,  2.7,  2.3, 1.35, 0.8),
    ('Nickel alloy',                320, 420,  3.1,  2.7, 1.35, 0.8),
    ('PH stainless steel',          275, 325, 2.25,  1.8, 1.35, 0.8),
    ('PH stainless steel',          325, 375, 2.45,    2, 1.35, 0.8),
    ('PH stainless steel',          375, 440, 2.65, 2.15, 1.35, 0.8),
    ('Titanium',                    110, 170,  1.5,  1.3, 1.25, 0.8),
    ('Titanium',                    160, 240, 1.75,  1.5, 1.35, 0.8),
    ('Titanium',                    300, 350,  2.1,  1.8, 1.35, 0.8),
    ('Titanium',                    340, 400,  2.3,    2, 1.35, 0.8),
    ('Tool steel',                  150, 200,    2, 1.55, 1.35, 0.8),
    ('Tool steel',                  200, 250,  2.2,  1.7, 1.35, 0.8),
    ('Tool steel',                  290, 340,  2.6,    2, 1.35, 0.8),
    ('Wrought aluminium',            30,  80,  0.6, 0.55, 1.25, 0.8),
    ('Wrought aluminium',            75, 170,  0.7, 0.65, 1.25, 0.8);
UPDATE T24_27_30_31 SET Source = 'Starting value';
