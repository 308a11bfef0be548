#include "ui/win32_view.h"

#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <string>

#include "addin/command_table.h"
#include "core/check.h"
#include "core/text_case.h"
#include "core/windows.h"
#include "host/host_list.h"
#include "ui/form_plan.h"
#include "ui/key_filters.h"
#include "ui/wide.h"

namespace lmt::ui {
namespace {

constexpr wchar_t kFormClass[] = L"LayomatForm";
constexpr wchar_t kFieldFilterProp[] = L"LayomatKeyFilter";
constexpr wchar_t kFieldProcProp[] = L"LayomatFieldProc";
constexpr int kAboutOk = IDOK;

// The frame table's list below the controls, the progress display below it.
constexpr int kFrameListHeight = 250;
constexpr int kProgressHeight = 18;
constexpr int kFileListWidth = 440;

bool IsBatchWindow(std::string_view name) {
  return name.starts_with("OknoFunctionRun") ||
         name.starts_with("OknoFunctionReplace") ||
         name == "OknoFunctionImport";
}

std::vector<core::BatchFile>* FilesOf(core::Window& model) {
  if (auto* w = dynamic_cast<core::OknoFunctionRunScript*>(&model))
    return &w->files;
  if (auto* w = dynamic_cast<core::OknoFunctionRunLisp*>(&model))
    return &w->files;
  if (auto* w = dynamic_cast<core::OknoFunctionReplaceAtribut*>(&model))
    return &w->files;
  if (auto* w = dynamic_cast<core::OknoFunctionReplaceText*>(&model))
    return &w->files;
  if (auto* w = dynamic_cast<core::OknoFunctionImport*>(&model))
    return &w->files;
  return nullptr;
}

std::wstring WindowTextOf(HWND hwnd) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(hwnd)) + 1, L'\0');
  text.resize(static_cast<size_t>(
      GetWindowTextW(hwnd, text.data(), static_cast<int>(text.size()))));
  return text;
}

void SetTextIfChanged(HWND hwnd, const std::wstring& text) {
  if (WindowTextOf(hwnd) != text) SetWindowTextW(hwnd, text.c_str());
}

void AddColumn(HWND list, int index, const std::wstring& text, int width) {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
  column.pszText = const_cast<wchar_t*>(text.c_str());
  column.cx = width;
  column.iSubItem = index;
  SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(&column));
}

void SetColumnText(HWND list, int index, const std::wstring& text) {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT;
  column.pszText = const_cast<wchar_t*>(text.c_str());
  SendMessageW(list, LVM_SETCOLUMNW, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(&column));
}

void SetRows(HWND list, const std::vector<std::vector<std::string>>& rows) {
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
  for (size_t r = 0; r < rows.size(); ++r) {
    for (size_t c = 0; c < rows[r].size(); ++c) {
      std::wstring text = Wide(rows[r][c]);
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(r);
      item.iSubItem = static_cast<int>(c);
      item.pszText = text.data();
      SendMessageW(list, c == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW,
                   c == 0 ? 0 : r, reinterpret_cast<LPARAM>(&item));
    }
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

int SelectedListRow(HWND list) {
  if (list == nullptr) return 0;
  const LRESULT index = SendMessageW(list, LVM_GETNEXTITEM,
                                     static_cast<WPARAM>(-1), LVNI_SELECTED);
  return index < 0 ? 0 : static_cast<int>(index) + 1;
}

}  // namespace

struct Win32View::Form {
  Win32View* view = nullptr;
  core::Window* model = nullptr;  // nullptr: the about window
  HWND hwnd = nullptr;
  std::vector<Element> elements;
  std::vector<HWND> children;  // parallel to elements
  Rect area;                   // what the elements cover
  HWND list = nullptr;         // frame table or file table
  HWND names = nullptr;        // OknoNameLayouts' list of layouts
  HWND pairs = nullptr;        // Replace text's pasted replacement list
  HWND progress = nullptr;
  HWND status = nullptr;
  HMENU menu = nullptr;
  std::vector<std::pair<HMENU, int>> menu_slots;  // per MainMenu() entry
  bool is_main = false;
  bool refreshing = false;  // model -> window: ignore change notifications
};

Win32View::Win32View(HINSTANCE instance) : instance_(instance) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES |
                                                     ICC_PROGRESS_CLASS |
                                                     ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = &Win32View::WindowProc;
  wc.hInstance = instance_;
  wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kFormClass;
  RegisterClassExW(&wc);  // a second view finds the class registered
  font_ = CreateFontW(-11, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                      DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                      DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"Tahoma");
}

Win32View::~Win32View() {
  for (auto& form : forms_) {
    if (form->hwnd != nullptr) DestroyWindow(form->hwnd);
  }
  if (about_ != nullptr) DestroyWindow(about_);
  about_form_.reset();
  if (text_window_ != nullptr) DestroyWindow(text_window_);
  text_form_.reset();
  if (font_ != nullptr) DeleteObject(font_);
}

void Win32View::Attach(addin::Commands* commands, core::Globals* globals) {
  commands_ = commands;
  globals_ = globals;
}

Win32View::Form* Win32View::FormOf(const core::Window& model) const {
  for (const auto& form : forms_)
    if (form->model == &model) return form.get();
  return nullptr;
}

std::intptr_t Win32View::Create(core::Window& model) {
  LMT_CHECK(FormOf(model) == nullptr);  // once per model and run
  auto form = std::make_unique<Form>();
  Form& f = *form;
  f.view = this;
  f.model = &model;
  f.is_main = model.name() == "OknoLmt";
  f.elements = PlanElements(model);
  Placement placement;
  if (f.is_main) placement.column_height = 470;
  f.area = PlaceElements(f.elements, placement);

  int width = f.area.width;
  int height = f.area.height;
  if (f.is_main) {
    width = std::max(width, 900);
    height += kFrameListHeight + kProgressHeight * 2 + 8;
  } else if (IsBatchWindow(model.name())) {
    width += kFileListWidth + 8;
    height = std::max(height, 320);
  } else if (model.name() == "OknoNameLayouts") {
    width = std::max(width, 260);
    height += 200;
  }
  RECT frame{0, 0, width, height};
  const DWORD style = f.is_main ? WS_OVERLAPPEDWINDOW
                                : (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU);
  AdjustWindowRectEx(&frame, style, f.is_main, 0);
  forms_.push_back(std::move(form));
  f.hwnd = CreateWindowExW(
      0, kFormClass, Wide(model.caption(model.name())).c_str(), style,
      CW_USEDEFAULT, CW_USEDEFAULT, frame.right - frame.left,
      frame.bottom - frame.top, nullptr, nullptr, instance_, &f);
  LMT_CHECK(f.hwnd != nullptr);
  if (f.is_main) {
    main_ = f.hwnd;
    BuildMenu(f);
  }

  f.children.resize(f.elements.size(), nullptr);
  for (size_t i = 0; i < f.elements.size(); ++i) {
    const Element& e = f.elements[i];
    const wchar_t* cls = L"BUTTON";
    DWORD s = WS_CHILD | WS_VISIBLE;
    DWORD ex = 0;
    switch (e.kind) {
      case ElementKind::kGroup:
        s |= BS_GROUPBOX;
        break;
      case ElementKind::kLabel:
        cls = L"STATIC";
        s |= SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS;
        break;
      case ElementKind::kButton:
        s |= BS_PUSHBUTTON | WS_TABSTOP;
        break;
      case ElementKind::kCheck:
        s |= BS_CHECKBOX | WS_TABSTOP;
        break;
      case ElementKind::kOption:
        s |= BS_RADIOBUTTON | WS_TABSTOP;
        break;
      case ElementKind::kEdit:
        cls = L"EDIT";
        s |= ES_AUTOHSCROLL | WS_TABSTOP;
        ex = WS_EX_CLIENTEDGE;
        break;
      case ElementKind::kCombo: {
        cls = L"COMBOBOX";
        auto* combo = static_cast<core::ComboBox*>(e.control);
        s |= WS_VSCROLL | WS_TABSTOP |
             (combo->stored() == core::ComboBox::Stored::kText
                  ? CBS_DROPDOWN
                  : CBS_DROPDOWNLIST);
        break;
      }
    }
    const int h = e.kind == ElementKind::kCombo ? 200 : e.rect.height;
    HWND child = CreateWindowExW(
        ex, cls, L"", s, e.rect.x, e.rect.y, e.rect.width, h, f.hwnd,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(kControlBase + i)),
        instance_, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    f.children[i] = child;
    if (e.kind == ElementKind::kEdit) {
      const KeyFilter filter = KeyFilterOf(e.name);
      if (filter != KeyFilter::kNone) {
        SetPropW(child, kFieldFilterProp,
                 reinterpret_cast<HANDLE>(static_cast<INT_PTR>(filter)));
        SetPropW(child, kFieldProcProp,
                 reinterpret_cast<HANDLE>(SetWindowLongPtrW(
                     child, GWLP_WNDPROC,
                     reinterpret_cast<LONG_PTR>(&Win32View::FieldProc))));
      }
    }
  }

  auto make_list = [&](int columns_hint) {
    HWND list = CreateWindowExW(
        WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
        WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SINGLESEL,
        0, 0, 10, 10, f.hwnd,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(kListId)), instance_,
        nullptr);
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                 LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    (void)columns_hint;
    return list;
  };
  if (f.is_main) {
    f.list = make_list(frames::kColumnCount);
    for (int c = 0; c < frames::kColumnCount; ++c) {
      AddColumn(f.list, c,
                Wide(frames::ColumnName(static_cast<frames::Column>(c))),
                c == 0 ? 36 : 80);
    }
    f.progress = CreateWindowExW(
        0, PROGRESS_CLASSW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, f.hwnd,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(kProgressId)), instance_,
        nullptr);
    f.status = CreateWindowExW(
        0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0, 0,
        10, 10, f.hwnd,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(kStatusId)), instance_,
        nullptr);
    SendMessageW(f.status, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  } else if (FilesOf(model) != nullptr) {
    f.list = make_list(3);
    AddColumn(f.list, 0, L"\u2116", 36);
    AddColumn(f.list, 1, L"", 130);
    AddColumn(f.list, 2, L"", 250);
    if (model.name() == "OknoFunctionReplaceText") {
      f.pairs = make_list(2);
      AddColumn(f.pairs, 0, L"", 200);
      AddColumn(f.pairs, 1, L"", 200);
    }
  } else if (model.name() == "OknoNameLayouts") {
    f.names = CreateWindowExW(
        WS_EX_CLIENTEDGE, L"LISTBOX", L"",
        WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY, 0, 0, 10, 10, f.hwnd,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(kListId)), instance_,
        nullptr);
    SendMessageW(f.names, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  }
  Layout(f);
  Refresh(model);
  return reinterpret_cast<std::intptr_t>(f.hwnd);
}

void Win32View::BuildMenu(Form& f) {
  f.menu = CreateMenu();
  const auto menu = addin::MainMenu();
  f.menu_slots.resize(menu.size());
  HMENU popup = nullptr;
  int bar_position = 0;
  int popup_position = 0;
  for (size_t i = 0; i < menu.size(); ++i) {
    const addin::MenuEntry& entry = menu[i];
    const UINT_PTR id = static_cast<UINT_PTR>(kMenuBase + i);
    // Captions come with Refresh; an item made with no text would be taken
    // for a separator.
    const std::wstring placeholder = Wide(entry.name);
    if (entry.level == 0) {
      const bool has_items = i + 1 < menu.size() && menu[i + 1].level == 1;
      if (has_items) {
        popup = CreatePopupMenu();
        AppendMenuW(f.menu, MF_POPUP | MF_STRING,
                    reinterpret_cast<UINT_PTR>(popup), placeholder.c_str());
      } else {
        popup = nullptr;
        AppendMenuW(f.menu, MF_STRING, id, placeholder.c_str());
      }
      f.menu_slots[i] = {f.menu, bar_position++};
      popup_position = 0;
      continue;
    }
    LMT_CHECK(popup != nullptr);
    if (addin::IsSeparator(entry)) {
      AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
      f.menu_slots[i] = {nullptr, popup_position++};
      continue;
    }
    AppendMenuW(popup, MF_STRING, id, placeholder.c_str());
    f.menu_slots[i] = {popup, popup_position++};
  }
  SetMenu(f.hwnd, f.menu);
}

void Win32View::Layout(Form& f) {
  RECT client;
  GetClientRect(f.hwnd, &client);
  if (f.is_main) {
    const int top = f.area.height;
    const int bottom = client.bottom - kProgressHeight * 2 - 4;
    MoveWindow(f.list, 8, top, std::max(10, int(client.right) - 16),
               std::max(10, bottom - top), TRUE);
    MoveWindow(f.progress, 8, bottom + 2, std::max(10, int(client.right) - 16),
               kProgressHeight - 4, TRUE);
    MoveWindow(f.status, 8, bottom + kProgressHeight + 2,
               std::max(10, int(client.right) - 16), kProgressHeight - 2, TRUE);
  } else if (f.list != nullptr) {
    // With a replacement list the file table gives it the lower half.
    const int height = std::max(10, int(client.bottom) - 16);
    const int files = f.pairs != nullptr ? height / 2 - 4 : height;
    const int width = std::max(10, int(client.right) - f.area.width - 8);
    MoveWindow(f.list, f.area.width, 8, width, files, TRUE);
    if (f.pairs != nullptr) {
      MoveWindow(f.pairs, f.area.width, 16 + files, width, height - files - 8,
                 TRUE);
    }
  } else if (f.names != nullptr) {
    MoveWindow(f.names, 8, f.area.height, std::max(10, int(client.right) - 16),
               std::max(10, int(client.bottom) - f.area.height - 8), TRUE);
  }
}

void Win32View::Show(core::Window& model) {
  Form* f = FormOf(model);
  LMT_CHECK(f != nullptr);
  ::ShowWindow(f->hwnd, SW_SHOW);
  UpdateWindow(f->hwnd);
}

void Win32View::Resize(core::Window& model, long width, long height) {
  Form* f = FormOf(model);
  LMT_CHECK(f != nullptr);
  // The launcher speaks twips: 1440 to the inch.
  HDC dc = GetDC(f->hwnd);
  const int dpi_x = GetDeviceCaps(dc, LOGPIXELSX);
  const int dpi_y = GetDeviceCaps(dc, LOGPIXELSY);
  ReleaseDC(f->hwnd, dc);
  MoveWindow(f->hwnd, 0, 0, MulDiv(static_cast<int>(width), dpi_x, 1440),
             MulDiv(static_cast<int>(height), dpi_y, 1440), TRUE);
}

void Win32View::Refresh(core::Window& model) {
  Form* form = FormOf(model);
  if (form == nullptr) return;
  Form& f = *form;
  f.refreshing = true;
  std::string title = model.caption(model.name());
  if (f.is_main && globals_ != nullptr) title = globals_->product_name;
  SetTextIfChanged(f.hwnd, Wide(title));
  if (f.menu != nullptr) {
    const auto menu = addin::MainMenu();
    for (size_t i = 0; i < menu.size(); ++i) {
      auto [parent, position] = f.menu_slots[i];
      if (parent == nullptr) continue;
      std::wstring text = Wide(model.caption(menu[i].name));
      MENUITEMINFOW info{};
      info.cbSize = sizeof info;
      info.fMask = MIIM_STRING;
      info.dwTypeData = text.data();
      SetMenuItemInfoW(parent, static_cast<UINT>(position), TRUE, &info);
    }
    DrawMenuBar(f.hwnd);
  }
  const std::vector<ExtraButton> extras = ExtraButtonsOf(model.name());
  for (size_t i = 0; i < f.elements.size(); ++i) {
    const Element& e = f.elements[i];
    HWND child = f.children[i];
    switch (e.kind) {
      case ElementKind::kGroup:
      case ElementKind::kLabel:
      case ElementKind::kButton: {
        std::string text = model.caption(e.key);
        if (e.key.empty()) {
          for (const ExtraButton& extra : extras)
            if (extra.name == e.name) text = extra.text;
        }
        if (f.is_main && e.key == "TXTVsegoLayout")
          text += " " + static_cast<core::OknoLmt&>(model).found_count;
        if (f.is_main && e.key == "TXTObrazecPoiska")
          text += " " + static_cast<core::OknoLmt&>(model).active_template;
        SetTextIfChanged(child, Wide(text));
        break;
      }
      case ElementKind::kCheck: {
        SetTextIfChanged(child, Wide(model.caption(e.key)));
        auto* check = static_cast<core::CheckBox*>(e.control);
        SendMessageW(child, BM_SETCHECK,
                     check->checked() ? BST_CHECKED : BST_UNCHECKED, 0);
        break;
      }
      case ElementKind::kOption: {
        SetTextIfChanged(child, Wide(model.caption(e.key)));
        auto* group = static_cast<core::OptionGroup*>(e.control);
        SendMessageW(child, BM_SETCHECK,
                     group->is_selected(e.slot) ? BST_CHECKED : BST_UNCHECKED,
                     0);
        break;
      }
      case ElementKind::kEdit:
        SetTextIfChanged(
            child, Wide(static_cast<core::TextField*>(e.control)->text()));
        break;
      case ElementKind::kCombo: {
        auto* combo = static_cast<core::ComboBox*>(e.control);
        SendMessageW(child, CB_RESETCONTENT, 0, 0);
        for (const std::string& item : combo->items()) {
          SendMessageW(child, CB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>(Wide(item).c_str()));
        }
        SendMessageW(child, CB_SETCURSEL,
                     static_cast<WPARAM>(combo->selected()), 0);
        if (combo->stored() == core::ComboBox::Stored::kText)
          SetTextIfChanged(child, Wide(combo->text()));
        break;
      }
    }
  }
  if (f.list != nullptr && !f.is_main) {
    SetColumnText(f.list, 1, Wide(model.caption("TXTTablName")));
    SetColumnText(f.list, 2, Wide(model.caption("TXTTablPut")));
  }
  FillList(f);
  RefreshEnabled(f);
  f.refreshing = false;
}

void Win32View::FillList(Form& f) {
  std::vector<std::vector<std::string>> rows;
  if (f.is_main) {
    if (commands_ == nullptr) return;
    const frames::FrameTable& table = commands_->frame_table();
    for (int c = 0; c < frames::kColumnCount; ++c) {
      std::string header = table.Cell(0, static_cast<frames::Column>(c));
      if (header.empty())
        header = frames::ColumnName(static_cast<frames::Column>(c));
      SetColumnText(f.list, c, Wide(header));
    }
    for (int r = 1; r < table.row_count(); ++r) {
      std::vector<std::string>& row = rows.emplace_back();
      for (int c = 0; c < frames::kColumnCount; ++c)
        row.push_back(table.Cell(r, static_cast<frames::Column>(c)));
    }
    SetRows(f.list, rows);
  } else if (std::vector<core::BatchFile>* files = FilesOf(*f.model)) {
    for (size_t i = 0; i < files->size(); ++i)
      rows.push_back(
          {std::to_string(i + 1), (*files)[i].name, (*files)[i].path});
    SetRows(f.list, rows);
    if (f.pairs != nullptr) {
      auto& text = static_cast<core::OknoFunctionReplaceText&>(*f.model);
      std::vector<std::vector<std::string>> pairs;
      for (const core::ReplaceListRow& row : text.replace_list)
        pairs.push_back({row.find, row.replace});
      SetColumnText(f.pairs, 0, Wide(text.caption("OptionTextOrList1")));
      SetColumnText(f.pairs, 1, Wide(text.caption("OptionValueList0")));
      SetRows(f.pairs, pairs);
    }
  } else if (f.names != nullptr) {
    auto& names = static_cast<core::OknoNameLayouts&>(*f.model);
    SendMessageW(f.names, LB_RESETCONTENT, 0, 0);
    for (const std::string& name : names.layout_names) {
      SendMessageW(f.names, LB_ADDSTRING, 0,
                   reinterpret_cast<LPARAM>(Wide(name).c_str()));
    }
    SendMessageW(f.names, LB_SETCURSEL, static_cast<WPARAM>(names.selected_row),
                 0);
  }
}

void Win32View::RefreshEnabled(Form& f) {
  for (size_t i = 0; i < f.elements.size(); ++i) {
    const Element& e = f.elements[i];
    bool enabled = true;
    if (e.control != nullptr) enabled = e.control->enabled();
    // A label takes the state of the field beside it.
    if (i + 1 < f.elements.size() && f.elements[i + 1].beside_label &&
        f.elements[i + 1].control != nullptr) {
      enabled = f.elements[i + 1].control->enabled();
    }
    if (f.is_main && e.name == "Command_GetNameLayouts") {
      enabled = static_cast<core::OknoLmt&>(*f.model)
                    .uni_text_name_obrazec_layout.enabled();
    }
    EnableWindow(f.children[i], enabled);
  }
}

void Win32View::Destroy(core::Window& model) {
  Form* f = FormOf(model);
  if (f == nullptr || f->hwnd == nullptr) return;
  HWND hwnd = f->hwnd;
  f->hwnd = nullptr;
  if (hwnd == main_) main_ = nullptr;
  SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
  DestroyWindow(hwnd);
  forms_.erase(std::find_if(forms_.begin(), forms_.end(),
                            [f](const auto& p) { return p.get() == f; }));
}

LRESULT CALLBACK Win32View::WindowProc(HWND hwnd, UINT message, WPARAM wparam,
                                       LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (form == nullptr) return DefWindowProcW(hwnd, message, wparam, lparam);
  if (form->hwnd == nullptr) form->hwnd = hwnd;
  return form->view->Handle(*form, message, wparam, lparam);
}

LRESULT CALLBACK Win32View::FieldProc(HWND hwnd, UINT message, WPARAM wparam,
                                      LPARAM lparam) {
  auto old = reinterpret_cast<WNDPROC>(GetPropW(hwnd, kFieldProcProp));
  if (message == WM_CHAR) {
    const auto filter = static_cast<KeyFilter>(
        reinterpret_cast<INT_PTR>(GetPropW(hwnd, kFieldFilterProp)));
    auto* form = reinterpret_cast<Form*>(
        GetWindowLongPtrW(GetParent(hwnd), GWLP_USERDATA));
    const bool comma = form != nullptr && form->view->globals_ != nullptr &&
                       form->view->globals_->decimal_comma;
    std::optional<wchar_t> key = FilterKey(filter, static_cast<wchar_t>(wparam),
                                           Utf8(WindowTextOf(hwnd)), comma);
    if (!key) return 0;
    wparam = static_cast<WPARAM>(*key);
  }
  return CallWindowProcW(old, hwnd, message, wparam, lparam);
}

LRESULT Win32View::Handle(Form& f, UINT message, WPARAM wparam, LPARAM lparam) {
  if (f.model == nullptr) {  // about and text windows: OK and close hide them
    if ((message == WM_COMMAND && LOWORD(wparam) == kAboutOk) ||
        message == WM_CLOSE) {
      ::ShowWindow(f.hwnd, SW_HIDE);
      return 0;
    }
    return DefWindowProcW(f.hwnd, message, wparam, lparam);
  }
  switch (message) {
    case WM_COMMAND:
      OnCommand(f, LOWORD(wparam), HIWORD(wparam),
                reinterpret_cast<HWND>(lparam));
      return 0;
    case WM_SIZE:
      Layout(f);
      return 0;
    case WM_CLOSE:
      // Until the add-in exits, closing keeps the window and its values.
      if (globals_ != nullptr && globals_->exiting) break;
      ::ShowWindow(f.hwnd, SW_HIDE);
      if (f.model != nullptr) f.model->set_visible(false);
      return 0;
    default:
      break;
  }
  return DefWindowProcW(f.hwnd, message, wparam, lparam);
}

void Win32View::OnCommand(Form& f, int id, int code, HWND control) {
  if (f.refreshing) return;
  core::Window& model = *f.model;
  if (control == nullptr && id >= kMenuBase && id < kListId) {
    const auto menu = addin::MainMenu();
    const size_t index = static_cast<size_t>(id - kMenuBase);
    if (index < menu.size() && commands_ != nullptr)
      commands_->Run(model.name(), menu[index].name);
    return;
  }
  if (id == kListId && f.names != nullptr && code == LBN_SELCHANGE) {
    static_cast<core::OknoNameLayouts&>(model).selected_row =
        static_cast<int>(SendMessageW(f.names, LB_GETCURSEL, 0, 0));
    return;
  }
  if (id < kControlBase) return;
  const size_t index = static_cast<size_t>(id - kControlBase);
  if (index >= f.elements.size()) return;
  const Element& e = f.elements[index];
  switch (e.kind) {
    case ElementKind::kButton:
      if (code == BN_CLICKED && commands_ != nullptr)
        commands_->Run(model.name(), e.name);
      return;
    case ElementKind::kCheck:
      if (code != BN_CLICKED) return;
      {
        auto* check = static_cast<core::CheckBox*>(e.control);
        check->set_checked(!check->checked());
      }
      break;
    case ElementKind::kOption:
      if (code != BN_CLICKED) return;
      static_cast<core::OptionGroup*>(e.control)->Select(e.slot);
      break;
    case ElementKind::kEdit:
      if (code != EN_CHANGE) return;
      static_cast<core::TextField*>(e.control)->set_text(
          Utf8(WindowTextOf(control)));
      return;
    case ElementKind::kCombo: {
      auto* combo = static_cast<core::ComboBox*>(e.control);
      if (code == CBN_SELCHANGE) {
        const LRESULT sel = SendMessageW(control, CB_GETCURSEL, 0, 0);
        if (sel < 0 || sel >= combo->size()) return;
        combo->Select(static_cast<int>(sel));
        if (f.is_main && e.name == "Combo_VersiaCAD" && commands_ != nullptr) {
          core::Windows& windows = commands_->session().windows();
          host::OnHostKindClick(
              combo->selected(), globals_ != nullptr && globals_->started,
              [&] { ShowWindow(windows.okno_nano_cad_versia); });
        }
        break;
      }
      if (code == CBN_EDITCHANGE) combo->set_text(Utf8(WindowTextOf(control)));
      return;
    }
    default:
      return;
  }
  AfterChange(f);
}

void Win32View::AfterChange(Form& f) {
  if (auto* main = dynamic_cast<core::OknoLmt*>(f.model)) main->UpdateEnabled();
  if (auto* parameters = dynamic_cast<core::OknoSozdatLayout*>(f.model))
    parameters->UpdateEnabled();
  if (auto* printer = dynamic_cast<core::OknoIzmenitPrinter*>(f.model))
    printer->UpdateEnabled();
  Refresh(*f.model);
}

void Win32View::ShowWindow(core::Window& window) {
  Form* f = FormOf(window);
  if (f == nullptr) {
    Create(window);
    f = FormOf(window);
  }
  if (f->hwnd != main_ && main_ != nullptr)
    SetWindowLongPtrW(f->hwnd, GWLP_HWNDPARENT,
                      reinterpret_cast<LONG_PTR>(main_));
  Refresh(window);
  ::ShowWindow(f->hwnd, SW_SHOW);
  SetForegroundWindow(f->hwnd);
  window.set_visible(true);
}

void Win32View::HideWindow(core::Window& window) {
  Form* f = FormOf(window);
  if (f == nullptr) return;
  ::ShowWindow(f->hwnd, SW_HIDE);
  window.set_visible(false);
}

void Win32View::FrameTableChanged() {
  for (auto& form : forms_)
    if (form->is_main) FillList(*form);
}

int Win32View::SelectedFrameRow() {
  for (auto& form : forms_)
    if (form->is_main) return SelectedListRow(form->list);
  return 0;
}

int Win32View::SelectedFileRow(core::Window& window) {
  Form* f = FormOf(window);
  return f == nullptr ? 0 : SelectedListRow(f->list);
}

std::vector<std::string> Win32View::PickFiles(std::string_view filter,
                                              bool multiple) {
  std::wstring wide_filter = Wide(filter);
  std::replace(wide_filter.begin(), wide_filter.end(), L'|', L'\0');
  wide_filter.push_back(L'\0');
  std::wstring buffer(32768, L'\0');
  OPENFILENAMEW ofn{};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = main_;
  ofn.lpstrFilter = wide_filter.c_str();
  ofn.lpstrFile = buffer.data();
  ofn.nMaxFile = static_cast<DWORD>(buffer.size());
  ofn.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY |
              (multiple ? OFN_ALLOWMULTISELECT : 0);
  if (!GetOpenFileNameW(&ofn)) return {};
  // One path, or the folder followed by the names, each ended by a NUL.
  std::vector<std::wstring> parts;
  for (const wchar_t* p = buffer.c_str(); *p != L'\0'; p += wcslen(p) + 1)
    parts.emplace_back(p);
  std::vector<std::string> paths;
  if (parts.size() == 1) {
    paths.push_back(Utf8(parts[0]));
  } else {
    for (size_t i = 1; i < parts.size(); ++i)
      paths.push_back(Utf8(parts[0] + L"\\" + parts[i]));
  }
  return paths;
}

std::optional<std::string> Win32View::PickSaveFile(
    std::string_view filter, std::string_view default_name) {
  std::wstring wide_filter = Wide(filter);
  std::replace(wide_filter.begin(), wide_filter.end(), L'|', L'\0');
  wide_filter.push_back(L'\0');
  std::wstring buffer = Wide(default_name);
  buffer.resize(32768, L'\0');
  // The proposed name's extension is added to a name typed without one.
  const size_t dot = default_name.rfind('.');
  const std::wstring extension =
      dot == std::string_view::npos ? L"" : Wide(default_name.substr(dot + 1));
  OPENFILENAMEW ofn{};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = main_;
  ofn.lpstrFilter = wide_filter.c_str();
  ofn.lpstrFile = buffer.data();
  ofn.nMaxFile = static_cast<DWORD>(buffer.size());
  ofn.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  ofn.Flags =
      OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
  if (!GetSaveFileNameW(&ofn)) return std::nullopt;
  return Utf8(buffer.c_str());
}

std::optional<std::string> Win32View::PickFolder(std::string_view title) {
  std::wstring wide_title = Wide(title);
  BROWSEINFOW info{};
  info.hwndOwner = main_;
  info.lpszTitle = wide_title.c_str();
  info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  PIDLIST_ABSOLUTE list = SHBrowseForFolderW(&info);
  if (list == nullptr) return std::nullopt;
  wchar_t path[MAX_PATH] = {};
  const BOOL ok = SHGetPathFromIDListW(list, path);
  CoTaskMemFree(list);
  if (!ok) return std::nullopt;
  return Utf8(path);
}

std::string Win32View::ClipboardText() {
  if (!OpenClipboard(main_)) return {};
  std::string text;
  if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (auto* chars = static_cast<const wchar_t*>(GlobalLock(data))) {
      text = Utf8(chars);
      GlobalUnlock(data);
    }
  }
  CloseClipboard();
  return text;
}

void Win32View::OpenWebPage(std::string_view address) {
  ShellExecuteW(nullptr, L"open", Wide(address).c_str(), nullptr, nullptr,
                SW_SHOWNORMAL);
}

void Win32View::ShowAbout() {
  if (about_ == nullptr) {
    std::string product = globals_ != nullptr ? globals_->product_name : "";
    std::string lines = product;
    if (globals_ != nullptr) {
      lines += "\n" + globals_->version_caption;
      if (!globals_->support_address.empty())
        lines += "\n" + globals_->support_address;
      if (!globals_->web_site.empty()) lines += "\n" + globals_->web_site;
    }
    auto form = std::make_unique<Form>();
    form->view = this;
    about_ = CreateWindowExW(
        WS_EX_DLGMODALFRAME, kFormClass, Wide(product).c_str(),
        WS_POPUP | WS_CAPTION | WS_SYSMENU, CW_USEDEFAULT, CW_USEDEFAULT, 300,
        170, main_, nullptr, instance_, form.get());
    about_form_ = std::move(form);
    HWND text = CreateWindowExW(0, L"STATIC", Wide(lines).c_str(),
                                WS_CHILD | WS_VISIBLE | SS_CENTER, 10, 14, 270,
                                70, about_, nullptr, instance_, nullptr);
    HWND ok = CreateWindowExW(
        0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | BS_DEFPUSHBUTTON, 110, 92,
        80, 24, about_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kAboutOk)),
        instance_, nullptr);
    SendMessageW(text, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    SendMessageW(ok, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  }
  ::ShowWindow(about_, SW_SHOW);
}

void Win32View::ShowText(std::string_view title, std::string_view text) {
  constexpr int kWidth = 640;
  constexpr int kHeight = 420;
  if (text_window_ == nullptr) {
    auto form = std::make_unique<Form>();
    form->view = this;
    text_window_ = CreateWindowExW(
        WS_EX_DLGMODALFRAME, kFormClass, L"",
        WS_POPUP | WS_CAPTION | WS_SYSMENU, CW_USEDEFAULT, CW_USEDEFAULT,
        kWidth, kHeight, main_, nullptr, instance_, form.get());
    text_form_ = std::move(form);
    RECT client;
    GetClientRect(text_window_, &client);
    const int width = static_cast<int>(client.right);
    const int height = static_cast<int>(client.bottom);
    text_edit_ = CreateWindowExW(
        WS_EX_CLIENTEDGE, L"EDIT", L"",
        WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
            ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL,
        8, 8, std::max(10, width - 16), std::max(10, height - 48), text_window_,
        nullptr, instance_, nullptr);
    HWND ok = CreateWindowExW(
        0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | BS_DEFPUSHBUTTON,
        std::max(0, width / 2 - 40), std::max(0, height - 32), 80, 24,
        text_window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kAboutOk)),
        instance_, nullptr);
    SendMessageW(text_edit_, WM_SETFONT, reinterpret_cast<WPARAM>(font_),
                 FALSE);
    SendMessageW(ok, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    // Tab stops wide enough for a layout name or a pair of coordinates.
    int stops = 64;  // dialog units
    SendMessageW(text_edit_, EM_SETTABSTOPS, 1,
                 reinterpret_cast<LPARAM>(&stops));
  }
  // The edit control breaks lines only at CR LF.
  std::wstring lines;
  for (wchar_t c : Wide(text)) {
    if (c == L'\n') lines += L'\r';
    lines += c;
  }
  SetWindowTextW(text_window_, Wide(title).c_str());
  SetWindowTextW(text_edit_, lines.c_str());
  ::ShowWindow(text_window_, SW_SHOW);
  SetForegroundWindow(text_window_);
}

HWND Win32View::progress_bar() const {
  for (const auto& form : forms_)
    if (form->is_main) return form->progress;
  return nullptr;
}

HWND Win32View::status_line() const {
  for (const auto& form : forms_)
    if (form->is_main) return form->status;
  return nullptr;
}

HWND Win32View::WindowOf(const core::Window& model) const {
  const Form* f = FormOf(model);
  return f == nullptr ? nullptr : f->hwnd;
}

HWND Win32View::ControlOf(const core::Window& model,
                          std::string_view key_or_name, int slot) const {
  const Form* f = FormOf(model);
  if (f == nullptr) return nullptr;
  for (size_t i = 0; i < f->elements.size(); ++i) {
    const Element& e = f->elements[i];
    // A caption key names one option button; a control name or settings
    // key needs the slot.
    if (core::EqualsIgnoreCase(e.key, key_or_name)) return f->children[i];
    const bool named = core::EqualsIgnoreCase(e.name, key_or_name) ||
                       (e.control != nullptr &&
                        core::EqualsIgnoreCase(e.control->key(), key_or_name));
    if (named && e.slot == slot) return f->children[i];
  }
  return nullptr;
}

HWND Win32View::ListOf(const core::Window& model) const {
  const Form* f = FormOf(model);
  return f == nullptr ? nullptr : (f->list != nullptr ? f->list : f->names);
}

HWND Win32View::ReplacementListOf(const core::Window& model) const {
  const Form* f = FormOf(model);
  return f == nullptr ? nullptr : f->pairs;
}

}  // namespace lmt::ui
