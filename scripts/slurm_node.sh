#!/usr/bin/env bash
# A Slurm of one node on this machine, for trying scripts/archive.sh --slurm. It needs root.
# usage: scripts/slurm_node.sh start FOLDER   prints the line that names the configuration
#        scripts/slurm_node.sh stop FOLDER
set -euo pipefail
folder=$(realpath -m "${2:?usage: scripts/slurm_node.sh start|stop FOLDER}")

stop() {
    local file
    for file in slurmd slurmctld munged; do
        [ ! -f "$folder/$file.pid" ] || kill "$(cat "$folder/$file.pid")" 2>/dev/null || true
    done
}

start() {
    local host cpus
    host=$(hostname -s) cpus=$(nproc)
    mkdir -p "$folder/state" "$folder/spool" "$folder/munge"
    chmod 755 "$folder"
    chmod 700 "$folder/munge"
    head -c 1024 /dev/urandom >"$folder/munge/key"
    chmod 400 "$folder/munge/key"
    cat >"$folder/slurm.conf" <<CONF
ClusterName=one
SlurmctldHost=$host(127.0.0.1)
AuthType=auth/munge
AuthInfo=socket=$folder/munge/socket
CryptoType=crypto/munge
SlurmUser=root
SlurmctldPort=16817
SlurmdPort=16818
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
MaxArraySize=20000
MaxJobCount=50000
NodeName=$host NodeAddr=127.0.0.1 CPUs=$cpus State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES MaxTime=INFINITE State=UP
CONF
    munged --force --key-file="$folder/munge/key" --socket="$folder/munge/socket" \
        --pid-file="$folder/munged.pid" --log-file="$folder/munge/log" --seed-file="$folder/munge/seed"
    export SLURM_CONF=$folder/slurm.conf
    slurmctld -f "$SLURM_CONF"
    slurmd -f "$SLURM_CONF"
    for _ in $(seq 50); do
        [ "$(sinfo -h -o %T 2>/dev/null)" != idle ] || { echo "export SLURM_CONF=$SLURM_CONF"; return; }
        sleep 0.2
    done
    echo "the node doesn't come up: see $folder/*.log" >&2
    exit 1
}

case "${1:-}" in
    start) start ;;
    stop) stop ;;
    *) echo "usage: scripts/slurm_node.sh start|stop FOLDER" >&2; exit 2 ;;
esac
