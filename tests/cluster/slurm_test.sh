#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# slurm_test.sh PROGRAM PICTURE: the recipes in cluster/slurm on a Slurm of one machine, made for the test in a temporary
# folder, on 127.0.0.1 only. Needs root; ends with 77 where that or Slurm is missing.
set -euo pipefail
program=$1 picture=$2
recipes=$(cd "$(dirname "$0")/../../cluster" && pwd)
((EUID == 0)) && command -v slurmctld slurmd munged sbatch >/dev/null || exit 77

folder=$(mktemp -d)
chmod 755 "$folder"  # munged asks for it
daemons=()
finish() {
  local status=$?
  scancel --user=root 2>/dev/null || true
  ((${#daemons[@]} == 0)) || kill "${daemons[@]}" 2>/dev/null || true
  wait
  ((status == 0)) || tail -n 20 "$folder"/*.log >&2
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
mkdir state spool
waits munge test -S munge
slurmctld -D 2>/dev/null &
daemons+=($!)
slurmd -D -N "$host" 2>/dev/null &
daemons+=($!)
waits node bash -c "sinfo -h -o %T | grep -qx idle"

gdal_translate -q -srcwin 400 100 700 600 -a_srs EPSG:4326 -a_ullr 10 50 40 20 "$picture" scene.tif
attribute-profile -q scene.tif one.tif area 40 2000 --connectivity 8
pixels() { gdalinfo -checksum "$1" | grep -e Checksum -e Description -e THRESHOLDS -e 'Pixel Size' -e Origin; }

# One of the tasks is killed: there is no mosaic, and no half window. The same command again computes that one alone.
cat >attribute-profile <<'STANDIN'
#!/usr/bin/env bash
[[ $SLURM_ARRAY_TASK_ID != 3 ]] || { touch "$MARK" && kill -9 $$; }
exec "$PROGRAM" "$@"
STANDIN
chmod +x attribute-profile
submit() { "$recipes/slurm/scene" scene.tif mosaic.tif 256 area 40 2000 --connectivity 8 >submitted; }
nothing_runs() { [[ -z $(squeue -h) ]]; }
MARK=$folder/killed PROGRAM=$program PATH="$folder:$PATH" submit
waits "end of the jobs" nothing_runs
[[ -e killed && ! -e mosaic.tif && $(cd mosaic.tif.parts && echo *.tif) != *3.tif* ]] || fail "$(ls . mosaic.tif.parts)"
parts=(mosaic.tif.parts/*.tif)
((${#parts[@]} == 8)) || fail "$(ls mosaic.tif.parts; cat mosaic.tif.parts/*.log)"
submit
grep -q ': windows 3 of 9$' submitted || fail "$(cat submitted)"
waits mosaic test -e mosaic.tif
waits "end of the jobs" nothing_runs
[[ ! -e mosaic.tif.parts ]] || fail "$(ls mosaic.tif.parts)"
diff <(pixels one.tif) <(pixels mosaic.tif) || fail "the mosaic differs from the single run"

# A folder of scenes.
mkdir scenes
for k in 1 2 3; do gdal_translate -q -b $k scene.tif scenes/$k.tif; done
"$recipes/slurm/folder" scenes profiles area 40 2000 --connectivity 8 >submitted
waits "end of the jobs" nothing_runs
for k in 1 2 3; do
  diff <(pixels profiles/$k.tif | grep Checksum) <(pixels one.tif | grep Checksum | sed -n "$((5 * k - 4)),$((5 * k))p") ||
    fail "profile $k differs"
done
[[ $("$recipes/slurm/folder" scenes profiles area 40 2000) == 'all profiles are there' ]] || fail "done twice"
