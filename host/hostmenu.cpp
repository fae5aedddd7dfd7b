#include "hostmenu.h"

#include "exporter.h"
#include "hostframe.h"
#include "texts.h"
#include "zbasic/zinter.h"

namespace zelhost {

namespace {

SV::Menu exportedMenu() {
    SV::Menu menu;
    int id = HostFrame::kOpenExported;
    for (const std::string& pattern : exportFileNames("*")) menu.Append(id++, SV::String(pattern));
    return menu;
}

SV::Menu fileMenu() {
    SV::Menu menu;
    menu.Append(HostFrame::kOpen, textOf(Text::kMenuOpen));
    menu.Append(HostFrame::kExport, textOf(Text::kMenuExport));
    menu.Append(exportedMenu(), textOf(Text::kMenuOpenExported));
    menu.AppendSeparator();
    menu.Append(HostFrame::kExit, textOf(Text::kMenuExit));
    return menu;
}

SV::Menu viewMenu() {
    const unsigned short language = ZelInternational::GetCurrentLanguageID();
    SV::Menu menu;
    menu.AppendChecked(HostFrame::kEnglish, textOf(Text::kMenuEnglish),
                       language == kEnglishLanguage);
    menu.AppendChecked(HostFrame::kGerman, textOf(Text::kMenuGerman), language == kGermanLanguage);
    menu.AppendSeparator();
    menu.Append(HostFrame::kFilter, textOf(Text::kMenuFilter));
    menu.AppendSeparator();
    menu.Append(HostFrame::kTile, textOf(Text::kMenuTile));
    menu.Append(HostFrame::kCascade, textOf(Text::kMenuCascade));
    return menu;
}

// "&" marks an access key.
SV::String menuTextOf(const std::string& command) {
    std::string text;
    for (const char c : command) text.append(c == '&' ? 2 : 1, c);
    return SV::String(text);
}

SV::Menu pluginMenu(const std::vector<std::string>& commands) {
    SV::Menu menu;
    int id = HostFrame::kFirstPlugin;
    for (const std::string& command : commands) menu.Append(id++, menuTextOf(command));
    return menu;
}

SV::Menu helpMenu() {
    SV::Menu menu;
    menu.Append(HostFrame::kAbout, textOf(Text::kMenuAbout));
    return menu;
}

}  // namespace

SV::Menu menuBar(const std::vector<std::string>& commands) {
    SV::Menu bar(SV::Menu::Kind::kBar);
    bar.Append(fileMenu(), textOf(Text::kMenuFile));
    bar.Append(viewMenu(), textOf(Text::kMenuView));
    if (!commands.empty()) bar.Append(pluginMenu(commands), textOf(Text::kMenuPlugins));
    bar.Append(helpMenu(), textOf(Text::kMenuHelp));
    return bar;
}

}  // namespace zelhost
