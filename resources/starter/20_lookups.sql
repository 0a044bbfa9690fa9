-- Lookup tables of the tool tables: cutting material, coating and holder.
-- A tool row stores the ID; the stored query of the tool table shows the Name under the same column name.
-- Tools are entered by Name, so names are unique within each table.

CREATE TABLE TOOL_MATERIAL (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(40),
    Description TEXT(255)
);
CREATE INDEX TOOL_MATERIAL_Name ON TOOL_MATERIAL (Name COLLATE NOCASE);

INSERT INTO TOOL_MATERIAL (ID, Name, Description) VALUES
    ( 1, 'HSS',               'High-speed steel, M2 class'),
    ( 2, 'HSS-Co5',           'High-speed steel with 5 % cobalt, M35 class'),
    ( 3, 'HSS-Co8',           'High-speed steel with 8 % cobalt, M42 class'),
    ( 4, 'HSS-PM',            'High-speed steel from powder metallurgy'),
    ( 5, 'Solid carbide',     'Fine-grain cemented carbide'),
    ( 6, 'Carbide tipped',    'Steel body with brazed carbide'),
    ( 7, 'Indexable carbide', 'Steel body with clamped carbide inserts'),
    ( 8, 'Cermet',            'Titanium carbonitride in a nickel-cobalt binder'),
    ( 9, 'CBN',               'Polycrystalline cubic boron nitride'),
    (10, 'PCD',               'Polycrystalline diamond, never for ferrous work'),
    (11, 'Carbon steel',      'Tool steel without alloying, for hand taps and small lots');

CREATE TABLE COATING (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(40),
    Description TEXT(255)
);
CREATE INDEX COATING_Name ON COATING (Name COLLATE NOCASE);

INSERT INTO COATING (ID, Name, Description) VALUES
    ( 1, 'Bright',         'No coating, ground flutes'),
    ( 2, 'Steam tempered', 'Oxide layer that holds coolant, for steels'),
    ( 3, 'TiN',            'Titanium nitride, general purpose'),
    ( 4, 'TiCN',           'Titanium carbonitride, interrupted cuts and tapping'),
    ( 5, 'TiAlN',          'Titanium aluminium nitride, hot and dry cutting'),
    ( 6, 'AlTiN',          'Aluminium titanium nitride, hardened steels'),
    ( 7, 'AlCrN',          'Aluminium chromium nitride, tough steels'),
    ( 8, 'ZrN',            'Zirconium nitride, aluminium and brass'),
    ( 9, 'DLC',            'Amorphous carbon, aluminium and copper'),
    (10, 'Diamond',        'Crystalline diamond film, graphite and composites');

-- Clamping range of the shank (or of the arbor bore for shell tools) in millimetres.
CREATE TABLE HOLDER (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Kind TEXT(40),
    Metric_Min_Shank DOUBLE,
    Metric_Max_Shank DOUBLE
);
CREATE INDEX HOLDER_Name ON HOLDER (Name COLLATE NOCASE);

INSERT INTO HOLDER (ID, Name, Kind, Metric_Min_Shank, Metric_Max_Shank) VALUES
    ( 1, 'ER11 collet chuck',         'collet chuck',    0.5,     7),
    ( 2, 'ER16 collet chuck',         'collet chuck',    0.5,    10),
    ( 3, 'ER20 collet chuck',         'collet chuck',      1,    13),
    ( 4, 'ER25 collet chuck',         'collet chuck',      1,    16),
    ( 5, 'ER32 collet chuck',         'collet chuck',      2,    20),
    ( 6, 'ER40 collet chuck',         'collet chuck',      3,    26),
    ( 7, 'ER50 collet chuck',         'collet chuck',     10,    34),
    ( 8, 'Drill chuck 13 mm',         'drill chuck',     0.5,    13),
    ( 9, 'Drill chuck 16 mm',         'drill chuck',       3,    16),
    (10, 'Side lock 20 mm',           'side lock',        20,    20),
    (11, 'Side lock 25 mm',           'side lock',        25,    25),
    (12, 'Side lock 32 mm',           'side lock',        32,    32),
    (13, 'Side lock 1 in',            'side lock',      25.4,  25.4),
    (14, 'Morse taper sleeve 2',      'taper sleeve',     14,    23),
    (15, 'Morse taper sleeve 3',      'taper sleeve',     23,    32),
    (16, 'Shell mill arbor 16 mm',    'shell arbor',      16,    16),
    (17, 'Shell mill arbor 22 mm',    'shell arbor',      22,    22),
    (18, 'Shell mill arbor 27 mm',    'shell arbor',      27,    27),
    (19, 'Shell mill arbor 32 mm',    'shell arbor',      32,    32),
    (20, 'Shell mill arbor 40 mm',    'shell arbor',      40,    40),
    (21, 'Shell mill arbor 60 mm',    'shell arbor',      60,    60),
    (22, 'Shell mill arbor 3/4 in',   'shell arbor',   19.05, 19.05),
    (23, 'Shell mill arbor 1 in',     'shell arbor',    25.4,  25.4),
    (24, 'Shell mill arbor 1-1/2 in', 'shell arbor',    38.1,  38.1),
    (25, 'Shell mill arbor 2-1/2 in', 'shell arbor',    63.5,  63.5),
    (26, 'Stub arbor for saws 13 mm', 'saw arbor',        13,    13),
    (27, 'Stub arbor for saws 16 mm', 'saw arbor',        16,    16),
    (28, 'Stub arbor for saws 22 mm', 'saw arbor',        22,    22),
    (29, 'Stub arbor for saws 32 mm', 'saw arbor',        32,    32),
    (30, 'Stub arbor for saws 1 in',  'saw arbor',      25.4,  25.4),
    (31, 'Boring bar sleeve',         'boring sleeve',     6,  50.8),
    (32, 'Stub arbor for saws 7/8 in',   'saw arbor',   22.225, 22.225),
    (33, 'Stub arbor for saws 1-1/4 in', 'saw arbor',    31.75,  31.75);
