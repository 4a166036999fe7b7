# Writes the manual page PAGE from its TEMPLATE: the version, and the list of options from the file
# OPTIONS.
file(READ "${OPTIONS}" OPTIONS)
string(STRIP "${OPTIONS}" OPTIONS)
file(READ "${TEMPLATE}" page)
string(CONFIGURE "${page}" page @ONLY)
file(WRITE "${PAGE}" "${page}")
