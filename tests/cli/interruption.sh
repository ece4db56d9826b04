# For tests that interrupt a running program; to be sourced. The work is done in a folder of its own.
# `pid` is the program that runs, `out` and `error` are the files that it writes its output into.
folder=$(mktemp -d)
pid=
trap 'kill -KILL $pid 2>/dev/null; rm -rf "$folder"' EXIT
cd "$folder" || exit 1
touch out error

fail() {
    echo "FAILED: $1"
    cat out error
    exit 1
}
# Waits until the condition holds; a program that has ended by then fails the test.
wait_until() {
    until "$@"; do
        kill -0 "$pid" 2>/dev/null || { wait "$pid"; fail "exit code $? came before: $*"; }
        sleep 0.02
    done
}
# Waits until the program has ended.
check_ended_with() {
    wait "$pid"
    check_code "$?" "$1"
}
check_code() {
    pid=
    [ "$1" -eq "$2" ] || fail "exit code $1 instead of $2"
    test -s tessera-*.tmp && fail "a temporary file was left"
}
