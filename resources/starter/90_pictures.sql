-- Preview pictures of the tool kinds.
-- picture(name) is a function that the creating program registers: it answers the bytes of pictures/<name>.png with the
-- name in lower case (picture('FLAT_END_MILL') is pictures/flat_end_mill.png), and fails when there is no such picture.
-- The two cutters below have no picture: their ICON stays Null, and hosts show the kind by its name alone.

UPDATE TOOL_TYPES_DATA SET ICON = picture(substr(TOOLTABLE_NAME, 3))
WHERE TOOLTABLE_NAME NOT IN ('Q_WOODRUFF_CUTTER', 'Q_DOVETAIL_CUTTER');
