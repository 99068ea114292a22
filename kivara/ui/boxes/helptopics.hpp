#pragma once
/// \file
/// Where the help topics of each module's messages begin. Internal.
///
/// Names and numbers are those of the help files; 0 is for a module without topics. The first row of a name counts: "aebox" has
/// another one further down, which help authors have in their lists.

namespace kivara {

struct HelpTopics {
  char const * module;
  unsigned long base;
};

// clang-format off
inline constexpr HelpTopics kHelpTopics[] = {
    {"aacquiui", 14600}, {"aactana", 1000}, {"aactdbd", 99000}, {"akdlui", 13900}, {"aadma", 7000},
    {"aadsi", 99200}, {"aalkwins", 1100}, {"aanabrw", 10800}, {"aanactrl", 1200}, {"aanadlg", 1300},
    {"aanaeval", 1400}, {"aanaud", 1700}, {"aap", 12300}, {"aapedit", 2000}, {"aappmod", 1800},
    {"aapqury", 14400}, {"aapview", 11300}, {"aaskpath", 0}, {"aassign", 0}, {"aattrdom", 0},
    {"aautoexp", 0}, {"aautoimp", 0}, {"abmpsup", 1900}, {"abrsimpl", 2800}, {"acaledit", 12400},
    {"acalenda", 0}, {"acalui", 2200}, {"acard", 9900}, {"acase40", 2300}, {"acccber", 9800},
    {"acccinit", 9700}, {"acccdlg", 2400}, {"acccout", 0}, {"aclassbx", 0}, {"aclog", 0},
    {"acoexhan", 11400}, {"acoexman", 11500}, {"acoexpar", 11600}, {"acompare", 2600}, {"aconfui", 7100},
    {"acore", 0}, {"adattime", 0}, {"adb", 0}, {"adbback", 9200}, {"adbinst", 9300},
    {"adbiwins", 0}, {"adbrest", 9400}, {"adbsess", 12700}, {"adiex", 0}, {"adistrib", 2900},
    {"kivcase", 3000}, {"adynattr", 3100}, {"adynpred", 3200}, {"aebox", 12200}, {"aeacheck", 0},
    {"aeadsply", 3300}, {"aeagents", 3400}, {"aeagnrl", 3500}, {"aearslt", 3600}, {"aeasubag", 3700},
    {"aebox", 0}, {"aedomdlg", 0}, {"aevafm", 0}, {"aeval", 0}, {"aevalrel", 3800},
    {"aexpa", 0}, {"aexpappl", 4100}, {"aexpdlg", 400}, {"aexplore", 2500}, {"aexport", 7200},
    {"aexpsort", 4300}, {"afile", 11200}, {"afilemgt", 10000}, {"agdt", 4400}, {"agenpar", 4500},
    {"aglochan", 4600}, {"agogo", 4700}, {"agolam", 12200}, {"agolay", 4800}, {"agraph", 4900},
    {"ahaconv", 13000}, {"ahagrob", 5000}, {"ahamot", 5100}, {"ahanote", 5200}, {"aicondef", 7300},
    {"aimpexp", 0}, {"aimport", 7400}, {"airefdlg", 0}, {"airdom", 1600}, {"alanggen", 0},
    {"aleo", 5300}, {"alib2sgm", 12000}, {"alibchk", 14000}, {"alibload", 100}, {"alibmgt", 7500},
    {"alibren", 8300}, {"alic", 14900}, {"alicinst", 0}, {"alogin", 8200}, {"amappman", 0},
    {"amessg", 99100}, {"amigrat", 7600}, {"amitzu", 0}, {"ammcp", 14800}, {"amoddiff", 5400},
    {"amoded", 0}, {"amodlru", 4200}, {"amodmgt", 7700}, {"amodraw", 5500}, {"amodtab", 5600},
    {"amomain", 5700}, {"amosheet", 0}, {"amoshell", 11700}, {"amsb", 0}, {"anamegen", 14500},
    {"anbbrow", 11000}, {"angdlg", 12100}, {"anotebk", 5800}, {"anumber", 14100}, {"aocgrrep", 0},
    {"aoffanim", 5900}, {"aoncust", 12100}, {"aontypes", 0}, {"aosetlic", 0}, {"aoutgen", 6000},
    {"apathui", 0}, {"apercalc", 10100}, {"aperctrl", 13800}, {"aperout", 10200}, {"aperpar", 10300},
    {"aperresm", 0}, {"aperress", 10400}, {"apersui", 10500}, {"aplangen", 6100}, {"apredct", 10900},
    {"aprint", 6200}, {"aproobjs", 6300}, {"aprogind", 0}, {"aprostep", 0}, {"apwchgui", 8400},
    {"aqueryed", 7800}, {"ar3call", 0}, {"arealwiz", 0}, {"areena", 6400}, {"aregex", 8500},
    {"arelrdef", 10600}, {"areport", 0}, {"areposui", 10700}, {"aresattr", 6500}, {"arightmg", 7900},
    {"as2rdlg", 6600}, {"ascope", 8000}, {"ascript", 13500}, {"ascrisup", 0}, {"aselect", 0},
    {"asetref", 11100}, {"asetsel", 6700}, {"asgmlexp", 6800}, {"asim1end", 4000}, {"asim1dlg", 1500},
    {"asim1ui", 0}, {"asim2dlg", 800}, {"asim2res", 0}, {"asim2ui", 0}, {"asim3ui", 0},
    {"asim4ui", 0}, {"asimlan", 0}, {"asimmap", 8600}, {"asimobj", 700}, {"asimrep", 0},
    {"asimtext", 9600}, {"asimui", 0}, {"asik", 6900}, {"asqladm", 300}, {"asrchmod", 14300},
    {"asrchtlb", 8700}, {"astarth", 11800}, {"astdcfg", 8800}, {"asubsrch", 600}, {"asuibrw", 500},
    {"asysbox", 2100}, {"atabctrl", 0}, {"atlbox", 0}, {"atstack", 0}, {"ausmgt", 8100},
    {"avedbox", 11900}, {"averctrl", 0}, {"averdate", 12900}, {"avidplay", 0}, {"awizard", 0},
    {"awrjpeg", 200}, {"axfggfx", 0}, {"axml", 900}, {"svxwins", 8900},
};
// clang-format on

} // namespace kivara
