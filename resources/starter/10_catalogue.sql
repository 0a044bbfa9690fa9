-- Catalogue of the tool tables, one row per kind of tool, in the order in which hosts list them.
-- TOOLTABLE_NAME is the stored query of the tool table: "Q_" and the table's name.
-- SEARCH_PARAM has one property name per line; lines are parted by CR LF, the last one has no line end.
-- DEF_NAME_FORMAT: property names between percent signs; nothing may follow the last sign, it would be lost.
-- PRIMARY_OP is the operation that a tool of this kind is first of all for; Null for kinds that do not cut.
-- ICON is filled by the last script.

CREATE TABLE TOOL_TYPES_DATA (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    TOOLTABLE_NAME TEXT(64),
    TOOL_TYPE TEXT(40),
    TOOL_SUBTYPE TEXT(40),
    SEARCH_PARAM LONGTEXT,
    COMMENT TEXT(255),
    TEMPL_TAB_NAME TEXT(64),
    DEF_NAME_FORMAT TEXT(255),
    PRIMARY_OP TEXT(40),
    ICON LONGBINARY
);
CREATE INDEX TOOL_TYPES_DATA_TOOLTABLE_NAME ON TOOL_TYPES_DATA (TOOLTABLE_NAME COLLATE NOCASE);

CREATE VIEW TOOL_TYPES AS
SELECT T.ID AS ID,
       T.TOOLTABLE_NAME AS TOOLTABLE_NAME,
       T.TOOL_TYPE AS TOOL_TYPE,
       T.TOOL_SUBTYPE AS TOOL_SUBTYPE,
       T.SEARCH_PARAM AS SEARCH_PARAM,
       T.COMMENT AS COMMENT,
       T.TEMPL_TAB_NAME AS TEMPL_TAB_NAME,
       T.DEF_NAME_FORMAT AS DEF_NAME_FORMAT,
       T.PRIMARY_OP AS PRIMARY_OP,
       T.ICON AS ICON
FROM TOOL_TYPES_DATA AS T;

-- Selections of the catalogue for hosts that show one kind of work at a time.
CREATE VIEW MILLING_TYPES AS
SELECT T.ID AS ID, T.TOOLTABLE_NAME AS TOOLTABLE_NAME, T.TOOL_TYPE AS TOOL_TYPE, T.TOOL_SUBTYPE AS TOOL_SUBTYPE
FROM TOOL_TYPES_DATA AS T
WHERE T.TOOL_TYPE = 'Milling'
ORDER BY T.TOOL_SUBTYPE;

CREATE VIEW HOLE_TYPES AS
SELECT T.ID AS ID, T.TOOLTABLE_NAME AS TOOLTABLE_NAME, T.TOOL_TYPE AS TOOL_TYPE, T.TOOL_SUBTYPE AS TOOL_SUBTYPE
FROM TOOL_TYPES_DATA AS T
WHERE T.TOOL_TYPE IN ('Drilling', 'Hole finishing')
ORDER BY T.TOOL_SUBTYPE;

CREATE VIEW THREADING_TYPES AS
SELECT T.ID AS ID, T.TOOLTABLE_NAME AS TOOLTABLE_NAME, T.TOOL_TYPE AS TOOL_TYPE, T.TOOL_SUBTYPE AS TOOL_SUBTYPE
FROM TOOL_TYPES_DATA AS T
WHERE T.TOOL_TYPE = 'Threading'
ORDER BY T.TOOL_SUBTYPE;

INSERT INTO TOOL_TYPES_DATA (TOOLTABLE_NAME, TOOL_TYPE, TOOL_SUBTYPE, COMMENT,
    TEMPL_TAB_NAME, DEF_NAME_FORMAT, PRIMARY_OP, SEARCH_PARAM) VALUES
    ('Q_FLAT_END_MILL', 'Milling', 'Flat end mill', 'Slots, shoulders, pockets and contours',
     'T_FEM_TEMPL', 'EM_%Diameter%%Unit%_F%Flutes_#%_L%Flute_Length%_%Material%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flutes_#' || char(13, 10) ||
         'Flute_Length' || char(13, 10) || 'Material'),
    ('Q_BALL_END_MILL', 'Milling', 'Ball end mill', 'Free-form surfaces and fillets',
     'T_FEM_TEMPL', 'BM_%Diameter%%Unit%_F%Flutes_#%_L%Flute_Length%_%Material%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flutes_#' || char(13, 10) ||
         'Flute_Length' || char(13, 10) || 'Material'),
    ('Q_BULL_NOSE_END_MILL', 'Milling', 'Bull-nose end mill', 'Roughing with a corner radius',
     NULL, 'RM_%Diameter%%Unit%_R%Corner_Radius%_F%Flutes_#%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Corner_Radius' || char(13, 10) ||
         'Flutes_#' || char(13, 10) || 'Material'),
    ('Q_CHAMFER_MILL', 'Milling', 'Chamfer mill', 'Chamfers and deburring along a contour',
     NULL, 'CM_%Diameter%%Unit%_A%Point_Angle%_F%Flutes_#%', 'CHAMFERING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Point_Angle' || char(13, 10) || 'Material'),
    ('Q_FACE_MILL', 'Milling', 'Face mill', 'Large flat faces',
     NULL, 'FM_%Diameter%%Unit%_Z%Inserts_#%_A%Lead_Angle%', 'FACE_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Inserts_#' || char(13, 10) || 'Lead_Angle'),
    ('Q_SLITTING_SAW', 'Milling', 'Slitting saw', 'Narrow slots and cutting off',
     NULL, 'SAW_%Diameter%x%Width%%Unit%_Z%Teeth_#%', 'SLIT_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Width' || char(13, 10) || 'Teeth_#'),
    ('Q_WOODRUFF_CUTTER', 'Milling', 'Woodruff keyseat cutter', 'Seats of half-round keys',
     NULL, 'WC_%Diameter%x%Width%%Unit%', 'SLIT_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Width' || char(13, 10) || 'Material'),
    ('Q_DOVETAIL_CUTTER', 'Milling', 'Dovetail cutter', 'Dovetail guides',
     NULL, 'DV_%Diameter%%Unit%_A%Dovetail_Angle%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Dovetail_Angle' || char(13, 10) || 'Material'),
    ('Q_V_BIT', 'Milling', 'V-bit', 'Lettering and sharp inner corners',
     NULL, 'VB_%Diameter%%Unit%_A%Point_Angle%_F%Flutes_#%', 'ENGRAVING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Point_Angle' || char(13, 10) || 'Material'),
    ('Q_ENGRAVING_CUTTER', 'Milling', 'Engraving cutter', 'Fine lines with a single lip',
     NULL, 'EN_%Diameter%%Unit%_A%Point_Angle%_T%Tip_Diameter%', 'ENGRAVING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Point_Angle' || char(13, 10) || 'Tip_Diameter'),
    ('Q_SINGLE_FLUTE_ROUTER', 'Milling', 'Single-flute router bit', 'Plastics, aluminium and composites',
     NULL, 'SR_%Diameter%%Unit%_L%Flute_Length%_%Cut_Direction%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flute_Length' || char(13, 10) ||
         'Cut_Direction' || char(13, 10) || 'Material'),
    ('Q_COMPRESSION_ROUTER', 'Milling', 'Compression router bit', 'Boards with clean edges on both faces',
     NULL, 'CR_%Diameter%%Unit%_F%Flutes_#%_L%Flute_Length%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flutes_#' || char(13, 10) ||
         'Flute_Length' || char(13, 10) || 'Upcut_Length'),
    ('Q_TWIST_DRILL', 'Drilling', 'Twist drill', 'Through and blind holes',
     NULL, 'DR_%Diameter%%Unit%_L%Flute_Length%_%Material%', 'DRILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flute_Length' || char(13, 10) ||
         'Point_Angle' || char(13, 10) || 'Material'),
    ('Q_CENTER_DRILL', 'Drilling', 'Centre drill', 'Centre holes for turning between centres',
     NULL, 'CD_%Pilot_Diameter%x%Body_Diameter%%Unit%', 'CENTER_DRILLING',
     'Pilot_Diameter' || char(13, 10) || 'Body_Diameter' || char(13, 10) || 'Unit'),
    ('Q_SPOT_DRILL', 'Drilling', 'Spot drill', 'Starting holes before drilling',
     NULL, 'SD_%Diameter%%Unit%_A%Point_Angle%', 'SPOT_DRILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Point_Angle' || char(13, 10) || 'Material'),
    ('Q_REAMER', 'Hole finishing', 'Machine reamer', 'Holes to size after drilling',
     NULL, 'RE_%Diameter%%Unit%_%Tolerance_Class%_F%Flutes_#%', 'REAMING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flutes_#' || char(13, 10) || 'Tolerance_Class'),
    ('Q_COUNTERSINK', 'Hole finishing', 'Countersink', 'Seats of countersunk screws and deburring',
     NULL, 'CS_%Diameter%%Unit%_A%Point_Angle%', 'COUNTERSINKING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Point_Angle' || char(13, 10) || 'Material'),
    ('Q_COUNTERBORE', 'Hole finishing', 'Counterbore', 'Seats of socket head screws',
     NULL, 'CB_%Diameter%x%Pilot_Diameter%%Unit%', 'COUNTERBORING',
     'Diameter' || char(13, 10) || 'Pilot_Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Screw_Size'),
    ('Q_BORING_BAR', 'Hole finishing', 'Boring bar', 'Bores to size and position',
     NULL, 'BB_%Bar_Diameter%%Unit%_MIN%Min_Bore%', 'BORING',
     'Bar_Diameter' || char(13, 10) || 'Min_Bore' || char(13, 10) || 'Unit' || char(13, 10) || 'Lead_Angle'),
    ('Q_TAP', 'Threading', 'Tap', 'Internal metric and unified threads',
     NULL, 'TAP_%TappingHead%_%Thread_Series%_%Diameter%x%Pitch%_%Unit%', 'TAPPING',
     'Thread_Size' || char(13, 10) || 'Thread_Series' || char(13, 10) || 'Diameter' || char(13, 10) ||
         'Unit' || char(13, 10) || 'TappingHead'),
    ('Q_PIPE_TAP', 'Threading', 'Pipe tap', 'Internal pipe threads',
     NULL, 'PT_%TappingHead%_%Thread_Size%_%Thread_Series%_%Unit%', 'TAPPING',
     'Thread_Size' || char(13, 10) || 'Thread_Series' || char(13, 10) || 'Unit' || char(13, 10) ||
         'TappingHead'),
    ('Q_THREAD_MILL', 'Threading', 'Thread mill', 'Threads by helical interpolation',
     NULL, 'TM_%Thread_Size%_%Diameter%%Unit%_F%Flutes_#%', 'THREAD_MILLING',
     'Thread_Size' || char(13, 10) || 'Diameter' || char(13, 10) || 'Pitch' || char(13, 10) || 'Unit'),
    ('Q_TAPPING_HEAD', 'Accessories', 'Tapping head', 'Heads and chucks that taps run in',
     NULL, 'TH_%Min_Diameter%-%Max_Diameter%%Unit%', NULL,
     'Name' || char(13, 10) || 'Min_Diameter' || char(13, 10) || 'Max_Diameter' || char(13, 10) || 'Unit');
