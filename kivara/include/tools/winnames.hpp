// Macros of the platform's header that would rename members of public classes: each takes the place of a function in two forms, and
// with it that of every other thing of its name. They end here, in whichever order a source includes the headers; what it wants of
// the system is called in its A or W form. Without a guard, since the platform's header may come after the first time.
#define KIVARA_ENDS_WINDOWS_NAMES

#undef DrawText
#undef GetUserName
#undef LoadLibrary
#undef LoadString
