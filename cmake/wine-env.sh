# Sourced by wine-up, wine-run and wine-down: one environment for every Windows program we start.
# ZBASIC_WINEPREFIX names another prefix than the cache's (tests of other locales do so).

wine_cache=${ZBASIC_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zbasic}
export WINEPREFIX=${ZBASIC_WINEPREFIX:-$wine_cache/wine}
export WINEDEBUG=${WINEDEBUG:--all}
# No debugger window for a crashing program (it would wait for a click), no .NET, no menu entries.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=;winedbg.exe="
# A UTF-8 locale gives the process code page 1252; without one umlauts break.
export LC_ALL=${ZBASIC_WINE_LOCALE:-C.UTF-8}
unset TZ

wine_program=/usr/lib/wine/wine64
wine_server=/usr/lib/wine/wineserver64
[ -x "$wine_server" ] || wine_server=/usr/lib/wine/wineserver
