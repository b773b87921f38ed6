# Where 32-bit Wine is installed; sourced by the scripts that install and run it.
wine_root=${HWT_WINE_ROOT:-/var/cache/hundredweight-wine}
wine_root=${wine_root%/}
case "$wine_root" in
/?*) ;;
*)
    echo "HWT_WINE_ROOT must be an absolute path" >&2
    exit 2
    ;;
esac

wine_is_installed() {
    [ -e "$wine_root.installed" ] && [ -d "$wine_root/usr" ]
}
