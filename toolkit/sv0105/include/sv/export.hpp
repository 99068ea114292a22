#pragma once
/// \file
/// SV_API: what SV0105.dll exports; and the platform's handles by name, so that public headers need no platform header.

#include "tools/winnames.hpp"

#ifdef SV0105_EXPORTS
#define SV_API __declspec(dllexport)
#else
#define SV_API __declspec(dllimport)
#endif

struct HBITMAP__;
struct HBRUSH__;
struct HDC__;
struct HFONT__;
struct HINSTANCE__;
struct HMENU__;
struct HPEN__;
struct HWND__;
typedef struct HBITMAP__ * HBITMAP;
typedef struct HBRUSH__ * HBRUSH;
typedef struct HDC__ * HDC;
typedef struct HFONT__ * HFONT;
typedef struct HINSTANCE__ * HINSTANCE;
typedef struct HMENU__ * HMENU;
typedef struct HPEN__ * HPEN;
typedef struct HWND__ * HWND;
