# Writes RECORD_FIELD(name) for each member of the rate context, in order: HEADER, TO.
cmake_minimum_required(VERSION 3.25)
file(READ ${HEADER} header)
string(REGEX REPLACE "/[*]([^*]|[*][^/])*[*]+/" "" header "${header}")
string(REGEX REPLACE ".*typedef struct RateContext {" "" header "${header}")
string(REGEX REPLACE "} RateContext;.*" "" header "${header}")
string(REGEX REPLACE "(HWT_OVERLAY struct|union) {|}" "" header "${header}")
string(REGEX MATCHALL "[A-Za-z0-9_]+(\\[[0-9]+\\])*[,;]" names "${header}")
list(TRANSFORM names REPLACE "[^A-Za-z0-9_].*" "")
list(TRANSFORM names REPLACE "(.+)" "RECORD_FIELD(\\1)\n")
list(JOIN names "" rows)
# Written only when it changes.
file(CONFIGURE OUTPUT ${TO} CONTENT "${rows}" @ONLY)
