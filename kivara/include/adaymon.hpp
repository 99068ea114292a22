#pragma once
/// \file
/// A control that asks for a day and a month without a year: a field for the day, and a list of the months.
///
/// \code
///   KivDayMonthControl start(&dialog, SV::ResId(17), 30, 60); // 17 RCDATA { 7, 20, 96, 13 } in the resource script
///   start.AllowFebruary29th(true);
///   start.SetDay(24);
///   start.SetMonth(11); // 24. December
/// \endcode
///
/// Main thread only, with a language pack of the library active, in which the names of the months are. Those in the list are
/// of the language in which the control was made.

#include "export.hpp"
#include "sv/control.hpp"
#include "sv/listbox.hpp"
#include "sv/metricfield.hpp"

/// The control itself is a placeholder: it gives the place and stays hidden, while field and list are windows of its
/// parent, at its left and its right end. Operations of windows that are not named here, such as Show, Hide and GrabFocus,
/// reach the placeholder alone. Tab goes to the field, then to the list, and the label that was made right before the
/// control leads to the field.
///
/// The field shows the day as "24."; it is typed, or stepped through by its buttons, the up and down keys and the wheel. Its
/// limits are 1 and the number of days of the selected month. When another month lowers them, the text of the field stays
/// until the field has had the keyboard and lost it, while GetDay already keeps within them.
class KIV_API KivDayMonthControl : public SV::Control {
public:
  /// Shows 1 January. If the system refuses one of the windows, see SV::Window.
  /// \param parent      must not be null, and holds the control, the field and the list
  /// \param id          the place and size; see SV::Control for the record and what follows when it is missing
  /// \param fieldWidth  of the field, in units of dialogs
  /// \param listWidth   of the list, in units of dialogs
  KivDayMonthControl(SV::Window * parent, SV::ResId const & id, int fieldWidth, int listWidth);
  ~KivDayMonthControl() override;

  int GetDay() const;   ///< from 1, within the limits of the month
  void SetDay(int day); ///< a day outside of the limits becomes the nearest one

  int GetMonth() const; ///< from 0, January; -1 once the windows have been closed
  /// A month that is not valid leaves the selected one.
  void SetMonth(int month);

  /// The name of the month, in the language that is active now.
  SV::String GetMonthString() const;
  /// Case-sensitive. A name that no month has leaves the selected one.
  void SetMonthString(SV::String const & name);

  /// \name Widths of the field and of the list, in units of dialogs
  /// They are not limited: if both together are wider than the control, the list covers the field or the other way round.
  /// @{
  int GetMFWidth() const { return mfWidth; }
  void SetMFWidth(int width);
  int GetLBWidth() const { return lbWidth; }
  void SetLBWidth(int width);
  /// @}

  /// Whether February has 29 days; at first it has 28.
  void AllowFebruary29th(bool allowed);

  /// Puts the field to the left end of the control, and the list to its right end. It is called when the control has been
  /// moved or has another size, and when a width changes; call it when the font of the application has changed.
  virtual void Resize();
  void Resize(SV::Size const & size) override;

  /// Of the field and the list too.
  void SetEnabled(bool enabled) override;

protected:
  /// A month has been selected, by the user or by the program: sets the field's maximum.
  /// \return 1; 0 after an assertion if no month is selected
  long MonthSelectHdl(SV::ListBox * list);

  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  SV::MetricField dayField;
  SV::ListBox monthList;
  int mfWidth;
  int lbWidth;
  bool february29Allowed = false;
};
