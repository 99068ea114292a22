#pragma once
/// \file
/// The bar below the documents, with a text at each end.

#include "windows/parts/themedwindow.hpp"

#include <functional>

namespace modeler {

class StatusBar : public ThemedWindow {
public:
  /// \param left, right  the texts, asked for each time it is painted
  StatusBar(SV::Window & frame, std::function<SV::String()> left, std::function<SV::String()> right);

  /// What its font needs, in pixels.
  long GetHeight() const;

  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;

private:
  std::function<SV::String()> left_;
  std::function<SV::String()> right_;
};

} // namespace modeler
