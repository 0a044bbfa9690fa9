-- Hardness of steel: Brinell (10 mm carbide ball, 3000 kgf) against Rockwell C, one table for each direction.
-- The second column is the key that is searched, in ascending order. Unlike the other machining tables these are
-- conversion figures and not starting values; they hold for unalloyed and low-alloy steels.

-- Brinell to Rockwell C
CREATE TABLE HARDNESS_BRC (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    HB DOUBLE,
    HRC DOUBLE,
    Source TEXT(40) DEFAULT 'Steel conversion'
);
CREATE INDEX HARDNESS_BRC_HB ON HARDNESS_BRC (HB);

CREATE VIEW Q_HARDNESS_BRC AS
SELECT T.ID AS ID,
       T.HB AS HB,
       T.HRC AS HRC,
       T.Source AS Source
FROM HARDNESS_BRC AS T
ORDER BY T.HB;

INSERT INTO HARDNESS_BRC (HB, HRC) VALUES
    (226,   20),
    (230, 20.8),
    (240, 22.5),
    (250, 24.5),
    (260, 26.3),
    (270, 27.9),
    (280, 29.1),
    (290, 30.5),
    (300, 31.9),
    (310, 32.9),
    (320, 34.1),
    (330, 35.3),
    (340, 36.5),
    (350, 37.7),
    (360, 38.8),
    (370, 39.9),
    (380, 40.9),
    (390,   42),
    (400,   43),
    (410, 44.1),
    (420, 44.9),
    (430, 45.8),
    (440, 46.7),
    (450, 47.6),
    (460, 48.4),
    (470, 49.1),
    (480, 49.9),
    (490, 50.6),
    (500, 51.2),
    (510, 51.9),
    (520, 52.6),
    (530, 53.3),
    (540, 53.8),
    (550, 54.4),
    (560,   55),
    (570, 55.6),
    (580, 56.2),
    (590, 56.7),
    (600, 57.2),
    (610, 57.8),
    (620, 58.3),
    (630, 58.8),
    (640, 59.3),
    (650, 59.8),
    (654,   60);

-- Rockwell C to Brinell
CREATE TABLE HARDNESS_RCB (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    HRC DOUBLE,
    HB DOUBLE,
    Source TEXT(40) DEFAULT 'Steel conversion'
);
CREATE INDEX HARDNESS_RCB_HRC ON HARDNESS_RCB (HRC);

CREATE VIEW Q_HARDNESS_RCB AS
SELECT T.ID AS ID,
       T.HRC AS HRC,
       T.HB AS HB,
       T.Source AS Source
FROM HARDNESS_RCB AS T
ORDER BY T.HRC;

INSERT INTO HARDNESS_RCB (HRC, HB) VALUES
    (20, 226),
    (21, 231),
    (22, 237),
    (23, 243),
    (24, 247),
    (25, 253),
    (26, 258),
    (27, 264),
    (28, 271),
    (29, 279),
    (30, 286),
    (31, 294),
    (32, 301),
    (33, 311),
    (34, 319),
    (35, 327),
    (36, 336),
    (37, 344),
    (38, 353),
    (39, 362),
    (40, 371),
    (41, 381),
    (42, 390),
    (43, 400),
    (44, 409),
    (45, 421),
    (46, 432),
    (47, 443),
    (48, 455),
    (49, 469),
    (50, 481),
    (51, 496),
    (52, 512),
    (53, 525),
    (54, 543),
    (55, 560),
    (56, 577),
    (57, 595),
    (58, 615),
    (59, 634),
    (60, 654);
