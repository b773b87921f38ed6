/* A service guide's entry points, for binding alone. A definition that renames one of them makes a
 * library that lacks it. */
void ServGd_Initialize(void) {}
void ServGd_GetServGuideData(void) {}
void ServGd_GetTerminals(void) {}
void ServGd_GetTermToTermDays(void) {}
void ServGd_Terminate(void) {}
