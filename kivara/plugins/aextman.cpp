#include "aextman.hpp"

#include <algorithm>

using SV::String;

namespace {

/// The position of the last dot, or -1.
std::int32_t lastDot(String const & path) {
  std::int32_t place = path.Len() - 1;
  while (place >= 0 && path.charAt(place) != '.')
    --place;
  return place;
}

} // namespace

KivExtensionManager::KivExtensionManager() = default;
KivExtensionManager::KivExtensionManager(String const & extension) : extensions_{extension} {}
KivExtensionManager::KivExtensionManager(KivExtensionManager const &) = default;
KivExtensionManager & KivExtensionManager::operator=(KivExtensionManager const &) = default;
KivExtensionManager::~KivExtensionManager() = default;

void KivExtensionManager::addExtension(String const & extension) { extensions_.push_back(extension); }

String KivExtensionManager::getExtension() const { return extensions_.empty() ? String() : extensions_.front(); }

void KivExtensionManager::setExtension(String & path) const {
  if (extensions_.empty() || path.charAt(path.Len() - 1) == '\\')
    return;
  std::int32_t const dot = lastDot(path);
  if (dot < 0 || !isKnown(path.substr(dot + 1)))
    path += "." + extensions_.front();
}

String KivExtensionManager::getPath(String path) const {
  std::int32_t const dot = lastDot(path);
  return dot >= 0 && isKnown(path.substr(dot + 1)) ? path.substr(0, dot) : path;
}

void KivExtensionManager::parsePath(String const & path, String & base, String & extension) {
  String const whole = path; // the results may be written into the same string
  std::int32_t const dot = lastDot(whole);
  base = dot < 0 ? whole : whole.substr(0, dot);
  extension = dot < 0 ? String() : whole.substr(dot + 1);
}

bool KivExtensionManager::isKnown(String const & extension) const {
  return std::any_of(extensions_.begin(), extensions_.end(), [&extension](String const & known) {
    return known.Len() == extension.Len() && SV::h_stricmp(known.c_str(), extension.c_str()) == 0;
  });
}
