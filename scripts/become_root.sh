# How scripts run commands as root; sourced by those that do. The commands are prefixed by $as_root.
as_root=""
[ "$(id -u)" -eq 0 ] || as_root="sudo"

can_become_root() {
    [ -n "$as_root" ] || return 0
    command -v sudo >/dev/null || return 1
    # Without a terminal sudo cannot ask for a password.
    sudo -n true 2>/dev/null || (: </dev/tty) 2>/dev/null
}
