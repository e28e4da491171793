# Timing helpers for the side-by-side bench scripts (sourced, not run).
# RUNS (default 3) sets how many runs `best` takes; the fastest counts.

measure() {  # prints "seconds peak-kB cpu-seconds" for a command
  /usr/bin/time -f "%e %M %U %S" "$@" 2>&1 >/dev/null | tail -1 | awk '{print $1, $2, $3 + $4}'
}

best() {  # the fastest of the runs, with its peak memory and processor time
  local best_s="" best_kb="" best_cpu="" s kb cpu
  for _ in $(seq "${RUNS:-3}"); do
    read -r s kb cpu < <(measure "$@")
    if [ -z "$best_s" ] || awk "BEGIN{exit !($s < $best_s)}"; then best_s=$s; best_kb=$kb; best_cpu=$cpu; fi
  done
  echo "$best_s $best_kb $best_cpu"
}
