#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# slurm_test.sh PROGRAM PICTURE: the recipes in cluster/slurm on a Slurm of one machine, made for the test in a temporary
# folder, on 127.0.0.1 only. Needs root; ends with 77, and says why, where that or Slurm is missing or no node starts.
set -euo pipefail
program=$1 picture=$2
recipes=$(cd "$(dirname "$0")/../../cluster" && pwd)
((EUID == 0)) && command -v slurmctld slurmd munged sbatch >/dev/null || { echo "no root or no Slurm"; exit 77; }

folder=$(mktemp -d)
chmod 755 "$folder"  # munged asks for it
daemons=()
finish() {
  local status=$? k
  scancel --user=root 2>/dev/null || true
  ((${#daemons[@]} == 0)) || kill "${daemons[@]}" 2>/dev/null || true
  for ((k = 0; k < 50; ++k)); do [[ -z $(jobs -r) ]] && break || sleep 0.2; done
  ((${#daemons[@]} == 0)) || kill -9 "${daemons[@]}" 2>/dev/null || true
  ((status == 0 || status == 77)) || tail -n 20 "$folder"/*.log >&2
  rm -rf "$folder"
}
trap finish EXIT
fail() {
  printf 'line %s: %s\n' "${BASH_LINENO[0]}" "$*" >&2
  exit 1
}
# waits TEXT COMMAND...: until the command succeeds, a minute at most.
waits() {
  local what=$1 k
  shift
  for ((k = 0; k < 300; ++k)); do
    "$@" >/dev/null 2>&1 && return
    sleep 0.2
  done
  fail "no $what in a minute"
}

cd "$folder"
export PATH="${program%/*}:$PATH" SLURM_CONF=$folder/slurm.conf
dd if=/dev/urandom of=key bs=1 count=1024 status=none
chmod 400 key
munged --foreground --key-file="$folder/key" --socket="$folder/munge" --pid-file="$folder/munged.pid" \
  --log-file="$folder/munged.log" --seed-file="$folder/seed" 2>/dev/null &
daemons+=($!)
host=$(hostname -s)
port=$((20000 + RANDOM % 10000))
cat >slurm.conf <<CONF
ClusterName=one
SlurmctldHost=$host(127.0.0.1)
SlurmUser=root
SlurmctldPort=$port
SlurmdPort=$((port + 1))
CommunicationParameters=NoInAddrAny,NoCtldInAddrAny
AuthType=auth/munge
AuthInfo=socket=$folder/munge
StateSaveLocation=$folder/state
SlurmdSpoolDir=$folder/spool
SlurmctldPidFile=$folder/slurmctld.pid
SlurmdPidFile=$folder/slurmd.pid
SlurmctldLogFile=$folder/slurmctld.log
SlurmdLogFile=$folder/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
ReturnToService=2
SchedulerParameters=sched_interval=1,sched_min_interval=0
NodeName=$host NodeAddr=127.0.0.1 CPUs=2 State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES State=UP
CONF
# A node that touches no control groups: they may be missing, or another's.
echo CgroupPlugin=cgroup/v1 >cgroup.conf
mkdir state spool
waits munge test -S munge
slurmctld -D 2>/dev/null &
daemons+=($!)
slurmd -D -N "$host" 2>/dev/null &
node=$!
daemons+=("$node")
is_idle() { sinfo -h -o %T | grep -qx idle; }
waits node bash -c "! kill -0 $node 2>/dev/null || sinfo -h -o %T | grep -qx idle"
is_idle || { echo "slurmd does not start here: $(grep -m 1 error slurmd.log)"; exit 77; }

# A scene with control points, a mask and a unit: what one run keeps has to come through the windows.
gdal_translate -q -srcwin 400 100 700 600 -a_srs EPSG:4326 -gcp 0 0 10 50 -gcp 700 0 40 50 -gcp 0 600 10 20 -b 1 -b 2 -b 3 \
  -mask 1 "$picture" scene.tif --config GDAL_TIFF_INTERNAL_MASK YES
settings=(area 40 2000 --connectivity 8)
attribute-profile -q scene.tif one.tif "${settings[@]}"

# A task is killed midway, and later the mosaic is: nothing that is finished goes, and what is missing alone is done again.
cat >attribute-profile <<'STANDIN'
#!/usr/bin/env bash
task=${SLURM_ARRAY_TASK_ID:-mosaic}
[[ $task == "$VICTIM" ]] || exec "$PROGRAM" "$@"
"$PROGRAM" "$@" --block 8 -j 1 &
for ((k = 0; k < 1000; ++k)); do compgen -G "$MADE" >/dev/null && break || sleep 0.01; done
kill -9 $! && touch "$MARK.$task" && kill -9 $$
STANDIN
chmod +x attribute-profile
submit() { "$recipes/slurm/scene" scene.tif mosaic.tif 256 "$@" >submitted; }
nothing_runs() { [[ -z $(squeue -h) ]]; }
submit_and_kill() {
  MARK=$folder/killed PROGRAM=$program VICTIM=$1 MADE=$2 PATH="$folder:$PATH" submit "${settings[@]}"
  waits "end of the jobs" nothing_runs
  [[ -e killed.$1 && ! -e mosaic.tif ]] || fail "$(ls -A . mosaic.tif.parts; cat mosaic.tif.parts/*.log)"
}
count() { find mosaic.tif.parts -maxdepth 1 -name '[0-9]*.tif' | wc -l; }
! submit perimeter 40 2>/dev/null || waits "end of the jobs" nothing_runs
submit_and_kill 3 'mosaic.tif.parts/.3.tif.partial-*/files/*'
[[ $(count) == 8 && ! -e mosaic.tif.parts/mosaic.log ]] || fail "$(ls mosaic.tif.parts; cat mosaic.tif.parts/*.log)"
submit_and_kill mosaic '.mosaic.tif.partial-*/files/*'
grep -q ': windows 3 of 9$' submitted || fail "$(cat submitted)"
[[ $(count) == 9 ]] || fail "windows are lost: $(ls mosaic.tif.parts)"
! submit area 41 2>/dev/null || fail "windows of another call were taken"
submit "${settings[@]}"
waits "end of the jobs" nothing_runs
[[ ! -e mosaic.tif.parts ]] || fail "$(ls mosaic.tif.parts)"
cmp one.tif mosaic.tif || fail "the mosaic differs from the single run"

# A folder of scenes.
mkdir scenes
for k in 1 2 3; do gdal_translate -q -b $k scene.tif scenes/$k.tif; done
pixels() { gdalinfo -checksum "$1" | grep -o 'Checksum=.*'; }
"$recipes/slurm/folder" scenes profiles "${settings[@]}" >submitted
waits "end of the jobs" nothing_runs
for k in 1 2 3; do
  diff <(pixels profiles/$k.tif) <(pixels one.tif | sed -n "$((5 * k - 4)),$((5 * k))p") ||
    fail "profile $k differs"
done
[[ $("$recipes/slurm/folder" scenes profiles area 40 2000) == 'all profiles are there' ]] || fail "done twice"
