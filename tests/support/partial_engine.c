/* An engine library's entry points, for binding alone. A definition that renames one of them makes
 * a library that lacks it. */
#define ENTRY_POINT(name)                                   \
    __attribute__((visibility("default"))) void name(void); \
    void name(void) {}

ENTRY_POINT(Tolvex_GetStateEx)
ENTRY_POINT(Tolvex_GetErrorStringEx)
ENTRY_POINT(Tolvex_InitializeTolvexEx)
ENTRY_POINT(Tolvex_Set_TolvexdataEx)
ENTRY_POINT(Tolvex_GetEffectiveTableEx)
ENTRY_POINT(Tolvex_GetEffectiveTableSizeEx)
ENTRY_POINT(Tolvex_GetTablesEx)
ENTRY_POINT(Tolvex_RateShipment2Ex)
ENTRY_POINT(Tolvex_disp_verEx)
ENTRY_POINT(Tolvex_EndTolvexEx)
