/* A partner library's entry points, for binding alone; a definition says which ones it has. */
#define ENTRY_POINT(name)                                   \
    __attribute__((visibility("default"))) void name(void); \
    void name(void) {}

ENTRY_POINTS
