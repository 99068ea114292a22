#include "sv/accelerator.hpp"

#include "sv/application.hpp"

#include <algorithm>
#include <utility>

namespace SV {

Accelerator::Accelerator() = default;

Accelerator::~Accelerator() { Application::RemoveAccel(this); }

bool Accelerator::InsertItem(unsigned short id, KeyCode code) {
  bool const isThere =
      std::any_of(items_.begin(), items_.end(), [&](Item const & item) { return item.id == id || item.code == code; });
  if (code == 0 || isThere)
    return false;
  items_.push_back({id, code});
  return true;
}

bool Accelerator::RemoveItem(unsigned short id) {
  return std::erase_if(items_, [id](Item const & item) { return item.id == id; }) != 0;
}

unsigned short Accelerator::GetItemCount() const { return static_cast<unsigned short>(items_.size()); }

void Accelerator::PushSelectHdl(SelectHandler handler) { handlers_.push_back(std::move(handler)); }

void Accelerator::PopSelectHdl() {
  if (!handlers_.empty())
    handlers_.pop_back();
}

long Accelerator::Select() {
  // A copy: they may be changed while they run, or die with this object.
  std::vector<SelectHandler> const handlers = handlers_;
  detail::Lifetime::Watch const alive(lifetime_);
  for (auto handler = handlers.rbegin(); alive && handler != handlers.rend(); ++handler)
    if (long const result = *handler ? (*handler)(this) : 0)
      return result;
  return 0;
}

bool Accelerator::Press(KeyCode code) {
  auto const item = std::find_if(items_.begin(), items_.end(), [code](Item const & each) { return each.code == code; });
  if (item == items_.end())
    return false;
  detail::Lifetime::Watch const alive(lifetime_);
  unsigned short const former = std::exchange(current_, item->id);
  bool const isDone = Select() != 0;
  if (alive)
    current_ = former;
  return isDone;
}

} // namespace SV
