# Registers the installed component for everybody whose data folders hold the prefix's share/.
# Made from `script`: `class_file` for `library`, both below the prefix.
file(READ "${script}" text)
string(REPLACE "%MODULE%" "${CMAKE_INSTALL_PREFIX}/${library}" text "${text}")
set(place "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${class_file}")
message(STATUS "Installing: ${place}")
file(WRITE "${place}" "${text}")
