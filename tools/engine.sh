#!/bin/bash
# A ClickHouse server for tests, benchmarks and trying things: on loopback, with ports and a folder of its own.
#   engine.sh install        gets Debian's packages; exit code 77, with the reason, where they cannot be had
#   engine.sh serve FOLDER   becomes the server with its data in FOLDER, which is made; ends when its caller ends
#   engine.sh wait FOLDER    waits until that server answers, and prints its address: http://127.0.0.1:PORT
#   engine.sh with COMMAND   runs the command with a server in a fresh folder and its address in QM_ENGINE_URL
# A folder keeps its ports and its data: serve it again after a kill.
set -euo pipefail

packages=(clickhouse-server clickhouse-client)

install() {
    local package missing=0 output
    for package in "${packages[@]}"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing=1
    done
    ((missing)) || return 0
    local root=()
    [[ $EUID -eq 0 ]] || root=(sudo -n)
    # In that run level the packages start no service of their own.
    local get=("${root[@]}" env DEBIAN_FRONTEND=noninteractive RUNLEVEL=1 apt-get -qq -o Dpkg::Use-Pty=0)
    if ! output=$({ "${get[@]}" update && "${get[@]}" install -y --no-install-recommends "${packages[@]}"; } 2>&1 </dev/null); then
        echo "skipped: the packages ${packages[*]} cannot be installed: $(tail -1 <<<"$output")" >&2
        exit 77
    fi
}

# Below the ports that the system gives to clients, so that no client takes one between two starts.
free_port() {
    local port
    while :; do
        port=$((20000 + RANDOM % 12000))
        if ! (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; then
            echo $port
            return
        fi
    done
}

configure() {
    local http tcp
    http=$(free_port)
    tcp=$(free_port)
    mkdir -p "$1"/{data,tmp,formats}
    cat >"$1/users.xml" <<END
<yandex>
    <profiles><default/></profiles>
    <quotas><default/></quotas>
    <users>
        <default><password/><networks><ip>127.0.0.1</ip></networks><profile>default</profile><quota>default</quota></default>
        <fleet><password>secret</password><networks><ip>127.0.0.1</ip></networks><profile>default</profile><quota>default</quota></fleet>
    </users>
</yandex>
END
    # One server plays both shards, in a database each, so that the Distributed table can be tried.
    cat >"$1/config.xml" <<END
<yandex>
    <logger><level>warning</level><log>$1/server.log</log><errorlog>$1/error.log</errorlog></logger>
    <listen_host>127.0.0.1</listen_host>
    <http_port>$http</http_port>
    <tcp_port>$tcp</tcp_port>
    <path>$1/data/</path>
    <tmp_path>$1/tmp/</tmp_path>
    <format_schema_path>$1/formats/</format_schema_path>
    <users_config>$1/users.xml</users_config>
    <default_profile>default</default_profile>
    <default_database>default</default_database>
    <mark_cache_size>268435456</mark_cache_size>
    <keep_alive_timeout>10</keep_alive_timeout>
    <remote_servers>
        <fleet>
            <shard><internal_replication>true</internal_replication>
                <replica><default_database>shard1</default_database><host>127.0.0.1</host><port>$tcp</port></replica></shard>
            <shard><internal_replication>true</internal_replication>
                <replica><default_database>shard2</default_database><host>127.0.0.1</host><port>$tcp</port></replica></shard>
        </fleet>
    </remote_servers>
</yandex>
END
    echo "$tcp" >"$1/tcp_port"
    echo "http://127.0.0.1:$http" >"$1/url"
}

serve() {
    mkdir -p "$1"
    local folder
    folder=$(cd "$1" && pwd)
    [[ -e $folder/url ]] || configure "$folder"
    # The system ends it with its caller, however that one ends.
    exec setpriv --pdeathsig KILL clickhouse-server --config-file="$folder/config.xml" \
        >>"$folder/output.log" 2>&1 </dev/null
}

wait_for() {
    local tries
    for ((tries = 0; tries < 300; ++tries)); do
        if [[ -e $1/url ]] && curl -sf --max-time 2 "$(<"$1/url")/ping" >/dev/null 2>&1; then
            cat "$1/url"
            return
        fi
        sleep 0.1
    done
    echo "the server in $1 does not answer:" >&2
    tail -5 "$1"/{error,output}.log >&2
    exit 1
}

with() {
    local folder
    folder=$(mktemp -d "${TMPDIR:-/tmp}/qmengine.XXXXXX")
    # shellcheck disable=SC2064 # the folder is known now
    trap "kill -9 \$! 2>/dev/null; rm -rf '$folder'" EXIT
    "$0" serve "$folder" &
    disown
    QM_ENGINE_URL=$("$0" wait "$folder") QM_ENGINE_FOLDER=$folder "$@"
}

case ${1-} in
install) install ;;
serve) serve "$2" ;;
wait) wait_for "$2" ;;
with) shift; with "$@" ;;
*) sed -n '2,/^set/{/^#/s/^# \?//p}' "$0"; exit 2 ;;
esac
