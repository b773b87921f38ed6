# Takes the fenced blocks of one language out of a page: PAGE, LANGUAGE, TO.
file(READ ${PAGE} page)
string(REGEX MATCH "\n```${LANGUAGE}\n(([^`]|`[^`])*)\n```" block "${page}")
string(REGEX REPLACE "^\n```${LANGUAGE}\n" "" block "${block}")
string(REGEX REPLACE "\n```$" "\n" block "${block}")
file(WRITE ${TO} "${block}")
