#include "aselfchk.hpp"

KivSelfCheck::KivSelfCheck() = default;
KivSelfCheck::KivSelfCheck(KivSelfCheck const &) = default;
KivSelfCheck & KivSelfCheck::operator=(KivSelfCheck const &) = default;
KivSelfCheck::~KivSelfCheck() = default;

void KivSelfCheck::operator()() const {}
