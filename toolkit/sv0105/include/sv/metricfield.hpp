#pragma once
/// \file
/// MetricField: a number with a unit, typed or stepped through.

#include "sv/control.hpp"

namespace SV {

inline constexpr WinBits WB_SPIN = 0x400;         ///< for MetricField: two buttons at its end, which step by 1
inline constexpr WinBits WB_SPIN_REPEAT = 0x800;  ///< they go on stepping while they are held
inline constexpr WinBits WB_DIGITS_ONLY = 0x4000; ///< only what belongs to a number with its unit can be typed

/// The unit that is shown after the number.
enum FieldUnit : unsigned short { FIELD_UNIT_NONE = 0, FIELD_UNIT_CUSTOM = 0xB };

/// A field for a whole number. At most 256 characters can be typed or pasted. The up and down keys and the wheel step it too.
///
/// Minimum and maximum hold for every value; first and last are where the steps end, if they lie within. When a limit
/// changes, the text stays as it is: GetValue already keeps within the limits, and the text follows when the field loses
/// the keyboard. All four are as wide as a long at first but for the minimum and first, which are 0.
class SV_API MetricField : public Control {
public:
  using ModifyHandler = std::function<void(MetricField *)>;

  explicit MetricField(Window * parent, WinBits style = WB_BORDER | WB_SPIN | WB_SPIN_REPEAT);
  ~MetricField() override;

  /// Within the limits. A text that is no number counts as the value before it. SetValue does not call the handler.
  long GetValue() const;
  void SetValue(long value);

  /// Each change gives the former one.
  long ChangeFirst(long first);
  long ChangeLast(long last);
  long ChangeMin(long minimum);
  long ChangeMax(long maximum);
  long GetFirst() const { return first_; }
  long GetLast() const { return last_; }
  long GetMin() const { return minimum_; }
  long GetMax() const { return maximum_; }

  /// The unit, and the text of FIELD_UNIT_CUSTOM, of which the first 64 characters are shown. The shown value takes them
  /// over at once.
  FieldUnit ChangeUnit(FieldUnit unit);
  String ChangeCustomUnitText(String const & text);

  /// The user has typed or stepped. The base calls the handler.
  virtual void Modify();

  /// The change gives the former one.
  ModifyHandler ChangeModifyHdl(ModifyHandler handler);

  void LostFocus() override;
  bool KeyInput(KeyEvent const & event) override;
  bool CharInput(char character) override;
  bool MouseWheel(MouseEvent const & event) override;

protected:
  bool Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) override;
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  long clamped(long value) const;
  void show(long value);
  void step(long count);
  void placeSpin();
  String unitText() const;

  HWND spin_ = nullptr;
  WinBits style_;
  long value_ = 0; ///< the last one that was a number
  long first_ = 0;
  long last_;
  long minimum_ = 0;
  long maximum_;
  FieldUnit unit_ = FIELD_UNIT_NONE;
  String customText_;
  ModifyHandler modifyHandler_;
  bool isShowing_ = false;  ///< the change of the text is the field's own
  bool hasStepped_ = false; ///< since the button went down
};

} // namespace SV
