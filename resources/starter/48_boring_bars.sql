-- Boring bars with clamped inserts. Min_Bore is the smallest bore the bar enters; Max_Overhang is four bar diameters
-- for steel bars and seven for carbide ones. Lead_Angle is in degrees, the rest in the unit of the row.

CREATE TABLE BORING_BAR (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Name TEXT(60),
    Bar_Diameter DOUBLE DEFAULT 16,
    Min_Bore DOUBLE DEFAULT 20,
    Unit TEXT(2) DEFAULT 'mm',
    Overall_Length DOUBLE DEFAULT 200,
    Max_Overhang DOUBLE DEFAULT 64,
    Lead_Angle DOUBLE DEFAULT 95,
    Insert_Shape TEXT(20) DEFAULT 'CCMT 06',
    Hand TEXT(10) DEFAULT 'Right',
    Standard TEXT(40),
    Material LONG DEFAULT 7,
    Coating LONG DEFAULT 5,
    Holder LONG,
    IsFavorite BOOLEAN DEFAULT 0,
    Comment TEXT(255),
    Vendor TEXT(60), Order_Code TEXT(60), Link TEXT(255),
    Tool_Number LONG DEFAULT 0, Pocket LONG DEFAULT 0, Stock LONG DEFAULT 0, Min_Stock LONG DEFAULT 0,
    AUX_Metric_Diameter DOUBLE AS (round(Bar_Diameter * iif(Unit = 'mm', 1, 25.4), 6))
);
CREATE INDEX BORING_BAR_Name ON BORING_BAR (Name COLLATE NOCASE);

CREATE VIEW Q_BORING_BAR AS
SELECT T.ID AS ID,
       T.Name AS Name,
       T.Bar_Diameter AS Bar_Diameter,
       T.Min_Bore AS Min_Bore,
       T.Unit AS Unit,
       T.Overall_Length AS Overall_Length,
       T.Max_Overhang AS Max_Overhang,
       T.Lead_Angle AS Lead_Angle,
       T.Insert_Shape AS Insert_Shape,
       T.Hand AS Hand,
       T.Standard AS Standard,
       M.Name AS Material,
       C.Name AS Coating,
       K.Name AS Holder,
       T.IsFavorite AS IsFavorite,
       T.Comment AS Comment,
       T.Vendor AS Vendor, T.Order_Code AS Order_Code, T.Link AS Link,
       T.Tool_Number AS Tool_Number, T.Pocket AS Pocket, T.Stock AS Stock, T.Min_Stock AS Min_Stock,
       T.AUX_Metric_Diameter AS AUX_Metric_Diameter
FROM BORING_BAR AS T
LEFT JOIN TOOL_MATERIAL AS M ON M.ID = T.Material
LEFT JOIN COATING AS C ON C.ID = T.Coating
LEFT JOIN HOLDER AS K ON K.ID = T.Holder;

-- Metric steel bars
INSERT INTO BORING_BAR (Name, Bar_Diameter, Min_Bore, Unit, Overall_Length, Max_Overhang, Insert_Shape,
    Standard) VALUES
    ('Boring bar 8 mm steel',   8, 11, 'mm', 100,  32, 'CCMT 06', 'ISO 5609'),
    ('Boring bar 10 mm steel', 10, 13, 'mm', 125,  40, 'CCMT 06', 'ISO 5609'),
    ('Boring bar 12 mm steel', 12, 16, 'mm', 150,  48, 'CCMT 06', 'ISO 5609'),
    ('Boring bar 16 mm steel', 16, 20, 'mm', 200,  64, 'CCMT 09', 'ISO 5609'),
    ('Boring bar 20 mm steel', 20, 25, 'mm', 250,  80, 'CCMT 09', 'ISO 5609'),
    ('Boring bar 25 mm steel', 25, 32, 'mm', 300, 100, 'CCMT 09', 'ISO 5609'),
    ('Boring bar 32 mm steel', 32, 40, 'mm', 350, 128, 'CCMT 12', 'ISO 5609'),
    ('Boring bar 40 mm steel', 40, 50, 'mm', 400, 160, 'CCMT 12', 'ISO 5609'),
    ('Boring bar 50 mm steel', 50, 63, 'mm', 450, 200, 'CCMT 12', 'ISO 5609');

-- Metric carbide bars
INSERT INTO BORING_BAR (Name, Bar_Diameter, Min_Bore, Unit, Overall_Length, Max_Overhang, Insert_Shape,
    Standard) VALUES
    ('Boring bar 8 mm carbide',   8, 11, 'mm', 100,  56, 'CCMT 06', 'ISO 5609'),
    ('Boring bar 10 mm carbide', 10, 13, 'mm', 125,  70, 'CCMT 06', 'ISO 5609'),
    ('Boring bar 12 mm carbide', 12, 16, 'mm', 150,  84, 'CCMT 06', 'ISO 5609'),
    ('Boring bar 16 mm carbide', 16, 20, 'mm', 200, 112, 'CCMT 09', 'ISO 5609'),
    ('Boring bar 20 mm carbide', 20, 25, 'mm', 250, 140, 'CCMT 09', 'ISO 5609'),
    ('Boring bar 25 mm carbide', 25, 32, 'mm', 300, 175, 'CCMT 09', 'ISO 5609');

-- Inch steel bars
INSERT INTO BORING_BAR (Name, Bar_Diameter, Min_Bore, Unit, Overall_Length, Max_Overhang, Insert_Shape,
    Standard) VALUES
    ('Boring bar 5/16 in steel',  0.3125,  0.4375, 'in',  4, 1.25, 'CCMT 21.5', 'Common series'),
    ('Boring bar 3/8 in steel',    0.375,     0.5, 'in',  5,  1.5, 'CCMT 21.5', 'Common series'),
    ('Boring bar 1/2 in steel',      0.5,   0.625, 'in',  6,    2, 'CCMT 21.5', 'Common series'),
    ('Boring bar 5/8 in steel',    0.625, 0.78125, 'in',  7,  2.5, 'CCMT 32.5', 'Common series'),
    ('Boring bar 3/4 in steel',     0.75,       1, 'in',  8,    3, 'CCMT 32.5', 'Common series'),
    ('Boring bar 1 in steel',          1,    1.25, 'in', 10,    4, 'CCMT 32.5', 'Common series'),
    ('Boring bar 1-1/4 in steel',   1.25,  1.5625, 'in', 12,    5, 'CCMT 43',   'Common series'),
    ('Boring bar 1-1/2 in steel',    1.5,   1.875, 'in', 14,    6, 'CCMT 43',   'Common series');

-- Inch carbide bars
INSERT INTO BORING_BAR (Name, Bar_Diameter, Min_Bore, Unit, Overall_Length, Max_Overhang, Insert_Shape,
    Standard) VALUES
    ('Boring bar 5/16 in carbide', 0.3125,  0.4375, 'in',  4, 2.1875, 'CCMT 21.5', 'Common series'),
    ('Boring bar 3/8 in carbide',   0.375,     0.5, 'in',  5,  2.625, 'CCMT 21.5', 'Common series'),
    ('Boring bar 1/2 in carbide',     0.5,   0.625, 'in',  6,    3.5, 'CCMT 21.5', 'Common series'),
    ('Boring bar 5/8 in carbide',   0.625, 0.78125, 'in',  7,  4.375, 'CCMT 32.5', 'Common series'),
    ('Boring bar 3/4 in carbide',    0.75,       1, 'in',  8,   5.25, 'CCMT 32.5', 'Common series'),
    ('Boring bar 1 in carbide',         1,    1.25, 'in', 10,      7, 'CCMT 32.5', 'Common series');

UPDATE BORING_BAR SET Holder = (SELECT ID FROM HOLDER WHERE Name = 'Boring bar sleeve');
