#include "adragman.hpp"

#include "sv/exchange.hpp"

using SV::String;

KivDragManager KivDragManager::g_aInstance;

long KivDragManager::GetClipboardFormatID() {
  if (g_aInstance.clipboardFormat == 0)
    g_aInstance.clipboardFormat = static_cast<long>(SV::Exchange::RegisterFormatName("KivDragContent"));
  return g_aInstance.clipboardFormat;
}

void KivDragManager::BeginDragAction(String const & text) {
  g_aInstance.dragType = KivDragText;
  g_aInstance.dragContent = text;
}

void KivDragManager::EndDragAction() {
  g_aInstance.dragType = KivDragNothing;
  g_aInstance.dragContent = String();
}

bool KivDragManager::ExistsDragContent() { return g_aInstance.dragType != KivDragNothing; }

KivDragType KivDragManager::GetDragType() { return g_aInstance.dragType; }

String const & KivDragManager::GetDragContent() { return g_aInstance.dragContent; }
