# Registers the installed component for everybody whose data folders hold the prefix's share/.
# Made from `script`: `class_file` for `library`, both below the prefix.
get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
file(READ "${script}" text)
string(REPLACE "%MODULE%" "${prefix}/${library}" text "${text}")
set(place "$ENV{DESTDIR}${prefix}/${class_file}")
message(STATUS "Installing: ${place}")
file(WRITE "${place}" "${text}")
