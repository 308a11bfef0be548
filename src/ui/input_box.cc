// The input box as an in-memory dialog template: a prompt, one edit field,
// OK and Cancel, no resource file needed.
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "ui/win32_user.h"

namespace lmt::ui {
namespace {

constexpr int kPromptId = 100;
constexpr int kEditId = 101;

struct State {
  const std::wstring* prompt;
  const std::wstring* text;
  std::wstring result;
};

// Appends the words of one dialog item: DLGITEMTEMPLATE, the class atom,
// the title, no creation data; each item starts on a DWORD boundary.
void AddItem(std::vector<WORD>& t, DWORD style, short x, short y, short cx,
             short cy, WORD id, WORD atom, const wchar_t* text) {
  if (t.size() % 2 != 0) t.push_back(0);
  DLGITEMTEMPLATE item{style | WS_CHILD | WS_VISIBLE, 0, x, y, cx, cy, id};
  const auto* words = reinterpret_cast<const WORD*>(&item);
  t.insert(t.end(), words, words + sizeof item / sizeof(WORD));
  t.push_back(0xFFFF);
  t.push_back(atom);
  for (const wchar_t* p = text; *p != L'\0'; ++p)
    t.push_back(static_cast<WORD>(*p));
  t.push_back(0);
  t.push_back(0);
}

INT_PTR CALLBACK InputProc(HWND dialog, UINT message, WPARAM wparam,
                           LPARAM lparam) {
  auto* state = reinterpret_cast<State*>(GetWindowLongPtrW(dialog, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG:
      SetWindowLongPtrW(dialog, DWLP_USER, lparam);
      state = reinterpret_cast<State*>(lparam);
      SetDlgItemTextW(dialog, kPromptId, state->prompt->c_str());
      SetDlgItemTextW(dialog, kEditId, state->text->c_str());
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wparam) == IDOK) {
        HWND edit = GetDlgItem(dialog, kEditId);
        std::wstring text(static_cast<size_t>(GetWindowTextLengthW(edit)) + 1,
                          L'\0');
        text.resize(static_cast<size_t>(
            GetWindowTextW(edit, text.data(), static_cast<int>(text.size()))));
        state->result = std::move(text);
        EndDialog(dialog, IDOK);
        return TRUE;
      }
      if (LOWORD(wparam) == IDCANCEL) {
        EndDialog(dialog, IDCANCEL);
        return TRUE;
      }
      break;
    default:
      break;
  }
  return FALSE;
}

}  // namespace

std::optional<std::wstring> ShowInputBox(HWND owner, const std::wstring& title,
                                         const std::wstring& prompt,
                                         const std::wstring& text) {
  std::vector<WORD> t;
  DLGTEMPLATE head{DS_MODALFRAME | DS_CENTER | DS_SETFONT | WS_POPUP |
                       WS_CAPTION | WS_SYSMENU,
                   0,
                   4,
                   0,
                   0,
                   240,
                   90};
  const auto* words = reinterpret_cast<const WORD*>(&head);
  t.insert(t.end(), words, words + sizeof head / sizeof(WORD));
  t.push_back(0);  // no menu
  t.push_back(0);  // the dialog class
  for (wchar_t c : title) t.push_back(static_cast<WORD>(c));
  t.push_back(0);
  t.push_back(8);  // font size, then the face
  for (const wchar_t* p = L"Tahoma"; *p != L'\0'; ++p)
    t.push_back(static_cast<WORD>(*p));
  t.push_back(0);
  AddItem(t, SS_LEFT, 7, 7, 170, 48, kPromptId, 0x0082, L"");
  AddItem(t, BS_DEFPUSHBUTTON | WS_TABSTOP, 184, 7, 50, 14, IDOK, 0x0080,
          L"OK");
  AddItem(t, BS_PUSHBUTTON | WS_TABSTOP, 184, 25, 50, 14, IDCANCEL, 0x0080,
          L"Cancel");
  AddItem(t, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 7, 68, 226, 14, kEditId,
          0x0081, L"");
  State state{&prompt, &text, {}};
  const INT_PTR r = DialogBoxIndirectParamW(
      GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(t.data()),
      owner, &InputProc, reinterpret_cast<LPARAM>(&state));
  if (r != IDOK) return std::nullopt;
  return state.result;
}

}  // namespace lmt::ui
