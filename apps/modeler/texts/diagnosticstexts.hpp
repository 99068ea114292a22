#pragma once
/// \file
/// The texts about what helps to find faults, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kMenuDiagnostics = static_cast<Text>(0x4701);
inline constexpr Text kYesButton = static_cast<Text>(0x4702);
inline constexpr Text kNoButton = static_cast<Text>(0x4703);

// Messages of the main window
inline constexpr Text kWatch = static_cast<Text>(0x4711);
inline constexpr Text kWatchStarted = static_cast<Text>(0x4712);
inline constexpr Text kWatchFailed = static_cast<Text>(0x4713);

// A request
inline constexpr Text kRequest = static_cast<Text>(0x4721);
inline constexpr Text kUrlLabel = static_cast<Text>(0x4722);
inline constexpr Text kAnswerLabel = static_cast<Text>(0x4723);
inline constexpr Text kSend = static_cast<Text>(0x4724);
inline constexpr Text kClose = static_cast<Text>(0x4725);
inline constexpr Text kWaiting = static_cast<Text>(0x4726);
inline constexpr Text kGivenUp = static_cast<Text>(0x4727);
inline constexpr Text kStatus = static_cast<Text>(0x4728);
inline constexpr Text kHeaders = static_cast<Text>(0x4729);
inline constexpr Text kBody = static_cast<Text>(0x472A);
inline constexpr Text kBodyGoesOn = static_cast<Text>(0x472B);
inline constexpr Text kNoUrl = static_cast<Text>(0x472C);
inline constexpr Text kUnknownHost = static_cast<Text>(0x472D);
inline constexpr Text kNoConnection = static_cast<Text>(0x472E);
inline constexpr Text kTimeout = static_cast<Text>(0x472F);
inline constexpr Text kConnectionLost = static_cast<Text>(0x4730);
inline constexpr Text kBadAnswer = static_cast<Text>(0x4731);
inline constexpr Text kBadCertificate = static_cast<Text>(0x4732);
inline constexpr Text kOtherFailure = static_cast<Text>(0x4733);
inline constexpr Text kNoMemory = static_cast<Text>(0x4734);

// Who is at work
inline constexpr Text kAtWork = static_cast<Text>(0x4741);
inline constexpr Text kUserName = static_cast<Text>(0x4742);
inline constexpr Text kDomain = static_cast<Text>(0x4743);
inline constexpr Text kFullName = static_cast<Text>(0x4744);
inline constexpr Text kIsAdministrator = static_cast<Text>(0x4745);
inline constexpr Text kDatabaseAccount = static_cast<Text>(0x4746);
inline constexpr Text kNoAccountFile = static_cast<Text>(0x4747);
inline constexpr Text kBadAccountFile = static_cast<Text>(0x4748);
inline constexpr Text kAdapter = static_cast<Text>(0x4749);
inline constexpr Text kInstallation = static_cast<Text>(0x474A);
inline constexpr Text kNotKnown = static_cast<Text>(0x474B);
inline constexpr Text kFactsLabel = static_cast<Text>(0x474C);

// A crash on demand
inline constexpr Text kCrash = static_cast<Text>(0x4751);
inline constexpr Text kReallyCrash = static_cast<Text>(0x4752);

} // namespace modeler
