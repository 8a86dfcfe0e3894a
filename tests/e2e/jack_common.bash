# Shared by the end-to-end scripts: a JACK server of the test's own on the
# dummy backend, and tavlo-vdevice on it. Source it; call start_jack, then
# start_vdevice NAME [ARGS...]. Everything started is stopped on exit.

cli="$TAVLO_BUILD_DIR/tools/tavlo-cli"
vdevice="$TAVLO_BUILD_DIR/tools/tavlo-vdevice"
work=$(mktemp -d)
jack_pid=""
vdevice_pids=()

fail() { echo "FAIL: $*"; exit 1; }

cleanup() {
    for pid in "${vdevice_pids[@]}"; do kill "$pid" 2>/dev/null; wait "$pid" 2>/dev/null; done
    if [[ -n "$jack_pid" ]]; then kill "$jack_pid" 2>/dev/null; wait "$jack_pid" 2>/dev/null; fi
    rm -rf "$work"
}
trap cleanup EXIT

start_jack() {
    command -v jackd >/dev/null || { echo "jackd is not installed: skipped"; exit 77; }
    # A server name of our own, so that nothing else on the machine clashes.
    export JACK_DEFAULT_SERVER="tavlo-e2e-$$"
    export JACK_NO_AUDIO_RESERVATION=1
    jackd --no-realtime -d dummy -r 48000 -p 1024 >"$work/jackd.log" 2>&1 &
    jack_pid=$!
    for _ in $(seq 100); do
        if "$cli" midi ports --api jack 2>/dev/null | grep -q .; then
            # The server answers once its system ports exist.
            if command -v jack_lsp >/dev/null; then
                jack_lsp >/dev/null 2>&1 && return 0
            else
                sleep 1 && return 0
            fi
        fi
        kill -0 "$jack_pid" 2>/dev/null || { cat "$work/jackd.log"; fail "jackd did not start"; }
        sleep 0.1
    done
    fail "jackd did not come up"
}

# start_vdevice NAME [ARGS...]: waits for its ready line.
start_vdevice() {
    local name=$1
    shift
    "$vdevice" --api jack --name "$name" "$@" >"$work/$name.log" 2>&1 &
    local pid=$!
    vdevice_pids+=("$pid")
    for _ in $(seq 100); do
        grep -q "ready" "$work/$name.log" && return 0
        kill -0 "$pid" 2>/dev/null || { cat "$work/$name.log"; fail "tavlo-vdevice $name ended"; }
        sleep 0.1
    done
    fail "tavlo-vdevice $name did not get ready"
}

# start_rawpeer NAME [ARGS...]: a test device that answers each request with
# bytes exactly as given (see tests/e2e/rawpeer.cpp); ports NAME:in and
# NAME-out:out. Stopped with the virtual devices.
start_rawpeer() {
    local name=$1
    shift
    "$TAVLO_BUILD_DIR/tests/tavlo-rawpeer" "$name" "$@" >"$work/$name.log" 2>&1 &
    local pid=$!
    vdevice_pids+=("$pid")
    for _ in $(seq 100); do
        grep -q "ready" "$work/$name.log" && return 0
        kill -0 "$pid" 2>/dev/null || { cat "$work/$name.log"; fail "tavlo-rawpeer $name ended"; }
        sleep 0.1
    done
    fail "tavlo-rawpeer $name did not get ready"
}

stop_vdevices() {
    for pid in "${vdevice_pids[@]}"; do kill "$pid" 2>/dev/null; wait "$pid" 2>/dev/null; done
    vdevice_pids=()
}

# sample_all_presets ID RAWSIZE: an ALL PRESETS dump of 51 entries of about
# RAWSIZE raw bytes each, made here with the device's layout so that the
# test doesn't take Tavlo's own builder on trust.
sample_all_presets() {
    perl -e '
        my ($id, $size) = @ARGV;
        srand(1600);
        my ($names, $dir, $bodies, $total) = ("", "", "", 0);
        for my $k (0 .. 50) {
            my $name = substr(sprintf("E2E Preset %-6d", $k), 0, 16);
            $names .= join "", map { chr(ord($_) >> 4) . chr(ord($_) & 15) } split //, $name;
            my $s = $size + $k % 9;
            $total += $s;
            $dir .= join "", map { chr(($total >> (4 * $_)) & 15) } (3, 2, 1, 0);
            $bodies .= join "", map { chr(int(rand(16))) } 1 .. 2 * $s;
        }
        binmode STDOUT;
        print "\xF0\x00\x00\x1B\x0B" . chr($id) . "\x01\x32\x00" . $names . ("\x00" x 4) . $dir . $bodies . "\xF7";
    ' "$@"
}
