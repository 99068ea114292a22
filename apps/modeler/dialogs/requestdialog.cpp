#include "dialogs/requestdialog.hpp"

#include "background/answertext.hpp"
#include "dialogs/dialogplaces.hpp"
#include "texts/diagnosticstexts.hpp"
#include "texts/viewtexts.hpp"
#include "tools/winapi.hpp"

#include <cstring>
#include <utility>

using SV::String;

namespace modeler {
namespace {

constexpr unsigned long kTick = 100;        // milliseconds
constexpr unsigned long kLongestUrl = 2048; // more than the library takes

constexpr SV::Size kArea = {320, 210};
constexpr long kWidth = kArea.width - 2 * kDialogMargin;
constexpr long kUrlTop = kDialogMargin + kLabelHeight + 2;
constexpr long kAnswerLabelTop = kUrlTop + kButtonSize.height + kDialogGap;
constexpr long kAnswerTop = kAnswerLabelTop + kLabelHeight + 2;
constexpr long kBottom = kArea.height - kDialogMargin - kButtonSize.height;
constexpr long kRightButton = kArea.width - kDialogMargin - kButtonSize.width;

String withSeconds(Text which, unsigned long long seconds) { return filled(which, std::to_string(seconds).c_str()); }

} // namespace

RequestDialog::RequestDialog(SV::Window * parent, String const & url,
                             std::function<void(String const &, String const &)> answered, unsigned patience)
    : ModalDialog(parent), answered_(std::move(answered)), patience_(patience) {
  SetText(plain(text(kRequest)));
  urlLabel_.SetText(text(kUrlLabel));
  answerLabel_.SetText(text(kAnswerLabel));
  send_.SetText(text(kSend));
  close_.SetText(text(kClose));
  url_.ChangeMaxTextLen(kLongestUrl);
  url_.SetText(url);
  send_.ChangeClickHdl([this](SV::PushButton *) { send(); });
  timer_.ChangeTimeoutHdl([this](SV::Timer *) { tick(); });
  place();
}

void RequestDialog::place() {
  ChangeOutputSizePixel(LogicToPixel(kArea, SV::MAP_APPFONT));
  placeInUnits(*this, urlLabel_, {kDialogMargin, kDialogMargin}, {kWidth, kLabelHeight});
  placeInUnits(*this, url_, {kDialogMargin, kUrlTop}, {kWidth - kButtonSize.width - kDialogGap, kFieldHeight});
  placeInUnits(*this, send_, {kRightButton, kUrlTop}, kButtonSize);
  placeInUnits(*this, answerLabel_, {kDialogMargin, kAnswerLabelTop}, {kWidth, kLabelHeight});
  placeInUnits(*this, answer_, {kDialogMargin, kAnswerTop}, {kWidth, kBottom - kDialogGap - kAnswerTop});
  placeInUnits(*this, close_, {kRightButton, kBottom}, kButtonSize);
  for (SV::Control * const control :
       std::vector<SV::Control *>{&urlLabel_, &url_, &send_, &answerLabel_, &answer_, &close_})
    control->Show();
}

/// While a request runs, the button does nothing: threads that are left to a slow server would pile up.
void RequestDialog::send() {
  if (request_.IsRunning())
    return;
  requested_ = url_.GetText();
  started_ = GetTickCount64();
  request_.Start(requested_.c_str());
  answer_.SetText(withSeconds(kWaiting, 0));
  timer_.Start(kTick);
}

void RequestDialog::tick() {
  unsigned long long const seconds = (GetTickCount64() - started_) / 1000;
  if (std::optional<WebAnswer> const answer = request_.TakeAnswer())
    end(answerText(*answer));
  else if (seconds >= patience_)
    end(withSeconds(kGivenUp, patience_));
  else if (String const waiting = withSeconds(kWaiting, seconds); waiting != answer_.GetText())
    answer_.SetText(waiting);
}

void RequestDialog::end(String const & text) {
  timer_.Stop();
  request_.Drop();
  answer_.SetText(text);
  answered_(requested_, String(text.c_str(), static_cast<std::int32_t>(std::strcspn(text.c_str(), "\n"))));
}

} // namespace modeler
