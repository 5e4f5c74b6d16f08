#!/bin/sh
# Runs a desktop test program under a window manager on the virtual display that xvfb-run
# made: maximising a window is the window manager's work, and without one a window asked to
# maximise keeps its size.
ready=$(mktemp -u)
openbox --sm-disable --startup "touch $ready" >/dev/null 2>&1 &
manager=$!
tries=0
while [ ! -e "$ready" ] && [ $tries -lt 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
done
rm -f "$ready"
"$@"
status=$?
kill $manager 2>/dev/null
wait $manager 2>/dev/null
exit $status
