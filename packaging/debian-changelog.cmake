# Writes the Debian changelog FILE for the newest heading of CHANGES, "## version - year-month-day",
# which must be that of VERSION. The changes themselves are in the other changelog beside it.
file(STRINGS ${CHANGES} headings REGEX "^## ")
list(GET headings 0 newest)
if(NOT newest MATCHES "^## (.+) - ([0-9-]+)$" OR NOT CMAKE_MATCH_1 STREQUAL VERSION)
  message(FATAL_ERROR "${CHANGES} begins with \"${newest}\", not with version ${VERSION}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date -u -R -d ${CMAKE_MATCH_2}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${FILE} "korvu (${VERSION}-${RELEASE}) unstable; urgency=medium\n\n"
  "  * Version ${VERSION}; /usr/share/doc/korvu/changelog.gz tells its changes.\n\n"
  " -- ${MAINTAINER}  ${date}\n")
