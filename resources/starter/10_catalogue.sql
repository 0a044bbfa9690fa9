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
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flutes_#' || char(13, 10) || 'Flute_Length' || char(13, 10) || 'Material'),
    ('Q_BALL_END_MILL', 'Milling', 'Ball end mill', 'Free-form surfaces and fillets',
     'T_FEM_TEMPL', 'BM_%Diameter%%Unit%_F%Flutes_#%_L%Flute_Length%_%Material%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Flutes_#' || char(13, 10) || 'Flute_Length' || char(13, 10) || 'Material'),
    ('Q_BULL_NOSE_END_MILL', 'Milling', 'Bull-nose end mill', 'Roughing with a corner radius',
     NULL, 'RM_%Diameter%%Unit%_R%Corner_Radius%_F%Flutes_#%', 'END_MILLING',
     'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'Corner_Radius' || char(13, 10) || 'Flutes_#' || char(13, 10) || 'Material'),
    ('Q_TAP', 'Threading', 'Tap', 'Internal metric and unified threads',
     NULL, 'TAP_%TappingHead%_%Thread_Series%_%Diameter%x%Pitch%_%Unit%', 'TAPPING',
     'Thread_Size' || char(13, 10) || 'Thread_Series' || char(13, 10) || 'Diameter' || char(13, 10) || 'Unit' || char(13, 10) || 'TappingHead'),
    ('Q_PIPE_TAP', 'Threading', 'Pipe tap', 'Internal pipe threads',
     NULL, 'PT_%TappingHead%_%Thread_Size%_%Thread_Series%_%Unit%', 'TAPPING',
     'Thread_Size' || char(13, 10) || 'Thread_Series' || char(13, 10) || 'Unit' || char(13, 10) || 'TappingHead'),
    ('Q_TAPPING_HEAD', 'Accessories', 'Tapping head', 'Heads and chucks that taps run in',
     NULL, 'TH_%Min_Diameter%-%Max_Diameter%%Unit%', NULL,
     'Name' || char(13, 10) || 'Min_Diameter' || char(13, 10) || 'Max_Diameter' || char(13, 10) || 'Unit');
