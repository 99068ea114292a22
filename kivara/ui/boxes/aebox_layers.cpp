#include "aebox.hpp"
#include "awinstack.hpp"
#include "sv/waitpause.hpp"

namespace {

long executeWithOrdinaryPointer(SV::MessBox & box) {
  SV::WaitPause const pause;
  return box.Execute();
}

} // namespace

KivInfoBox::KivInfoBox(SV::Window * parent, SV::ResId const & id) : InfoBox(parent, id) { Kiv_PushParentWindow(this); }

KivInfoBox::KivInfoBox(SV::Window * parent, SV::String const & text) : InfoBox(parent, text) {
  Kiv_PushParentWindow(this);
}

KivInfoBox::~KivInfoBox() { Kiv_PopParentWindow(this); }

long KivInfoBox::Execute() { return executeWithOrdinaryPointer(*this); }

KivQueryBox::KivQueryBox(SV::Window * parent, SV::ResId const & id) : QueryBox(parent, id) {
  Kiv_PushParentWindow(this);
}

KivQueryBox::KivQueryBox(SV::Window * parent, unsigned long style, SV::String const & text)
    : QueryBox(parent, style, text) {
  Kiv_PushParentWindow(this);
}

KivQueryBox::~KivQueryBox() { Kiv_PopParentWindow(this); }

long KivQueryBox::Execute() { return executeWithOrdinaryPointer(*this); }

KivWarningBox::KivWarningBox(SV::Window * parent, SV::ResId const & id) : WarningBox(parent, id) {
  Kiv_PushParentWindow(this);
}

KivWarningBox::KivWarningBox(SV::Window * parent, unsigned long style, SV::String const & text)
    : WarningBox(parent, style, text) {
  Kiv_PushParentWindow(this);
}

KivWarningBox::~KivWarningBox() { Kiv_PopParentWindow(this); }

long KivWarningBox::Execute() { return executeWithOrdinaryPointer(*this); }
