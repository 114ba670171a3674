#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# program_test.sh PROGRAM PICTURE: the program on raster files, judged by GDAL's own programs. PICTURE has three bands.
set -euo pipefail
program=$1 picture=$2
guide=$(cd "$(dirname "$0")/../.." && pwd)/docs/user_guide.md
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/work" && cd "$folder/work"
printed=../printed message=../message view=../view differences=../differences  # not beside what is tested

fail() {
  printf 'line %s: %s\n' "${BASH_LINENO[0]}" "$*" >&2
  exit 1
}

# same A B: equal pixels, and everything else that GDAL knows of them. (The files may be laid out differently.)
same() {
  gdalcompare.py "$1" "$2" >$differences || true
  ! grep -v -e '^Files differ at the binary level' -e '^Differences Found: [01]$' $differences ||
    fail "$1 and $2 differ: $(cat $differences)"
}

# shows FILE TEXT...: gdalinfo's view of the file has each text.
shows() {
  local file=$1 text
  shift
  gdalinfo -mdd xml:XMP "$file" >$view
  for text in "$@"; do grep -qF -- "$text" $view || fail "$file does not show: $text; but $(cat $view)"; done
}

# refuses STATUS TEXT ARGUMENT...: ends with this status and one line of error that has the text; leaves no files.
refuses() {
  local status=$1 text=$2 got=0 before
  shift 2
  before=$(ls -A)
  "$program" "$@" >$printed 2>$message || got=$?
  [[ $got == "$status" && $(wc -l <$message) == 1 && ! -s $printed ]] || fail "status $got for $*: $(cat $printed $message)"
  grep -qF -- "$text" $message || fail "$* says $(cat $message)"
  [[ $(ls -A) == "$before" ]] || fail "$* left $(ls -A)"
}

run() {
  "$program" -q "$@" >$printed 2>&1 || fail "$*: $(cat $printed)"
  [[ ! -s $printed ]] || fail "$* printed: $(cat $printed)"
}

gdal_translate -q -srcwin 480 200 300 211 -a_srs EPSG:4326 -a_ullr 10 50 40 20 "$picture" scene.tif

# Every type: the file has its bands, and blocks give what the whole gives. The planes are those of the library: the
# middle one is the input, the first one is nowhere darker and the last one nowhere brighter.
for type in Byte Int16 UInt16 Int32 UInt32 Int64 UInt64; do
  gdal_translate -q -ot $type scene.tif typed.tif
  run typed.tif whole.tif area 30 400 -b 2 --connectivity 8
  run typed.tif blocks.tif area 30 400 -b 2 --connectivity 8 --block 64 --overlap 3
  same whole.tif blocks.tif
  shows whole.tif "Type=$type" 'band 2, area, dark < 400' 'band 2, area, bright < 400'
  gdal_translate -q -b 3 whole.tif middle.tif
  gdal_translate -q -b 2 typed.tif input.tif
  [[ $(gdalinfo -checksum middle.tif | grep -o 'Checksum=.*') == $(gdalinfo -checksum input.tif | grep -o 'Checksum=.*') ]]
done
gdal_calc.py --quiet -A scene.tif --allBands=A --calc='A.astype("int16")-256*(A>127)' --type=Int16 --outfile=wide.tif
gdal_translate -q -co PIXELTYPE=SIGNEDBYTE scene.tif signed.tif 2>/dev/null
for file in wide signed; do run $file.tif $file.out.tif d 9.5; done
diff <(gdalinfo -stats wide.out.tif | grep 'Minimum=') <(gdalinfo -stats signed.out.tif | grep 'Minimum=') || fail "signed bytes"

# A part, by blocks or not, is that part of the whole, by all attributes and rules.
for settings in 'area 100 1000' 'diagonal 20' 'inertia 0.3 0.5' 'std 5 --rule direct' 's 5 --rule max'; do
  # shellcheck disable=SC2086  # words
  run scene.tif whole.tif $settings
  # shellcheck disable=SC2086
  run scene.tif part.tif $settings --srcwin 101 33 150 120
  gdal_translate -q -srcwin 101 33 150 120 -mo 'SRCWIN=101 33 150 120' whole.tif expected.tif
  same expected.tif part.tif
done
run scene.tif part.tif area 100 --srcwin 101 33 150 120 --block 50
run scene.tif again.tif area 100 --srcwin 101 33 150 120
same part.tif again.tif

# What the file is: place, settings, planes in the order of the function.
run scene.tif out.tif area 100 1000 -b 3 -b 1 --connectivity 8
shows out.tif 'ID["EPSG",4326]' 'Origin = (10.00' 'THRESHOLDS=100 1000' 'ATTRIBUTE=area' 'CONNECTIVITY=8' 'RULE=min' \
  'EXACT=YES' 'COMPRESSION=DEFLATE' 'Block=256x256' 'ColorInterp=Blue'
gdalinfo out.tif | sed -n 's/^ *Description = //p' >descriptions
diff descriptions - <<'LINES' || fail "descriptions"
band 3, area, dark < 1000
band 3, area, dark < 100
band 3
band 3, area, bright < 100
band 3, area, bright < 1000
band 1, area, dark < 1000
band 1, area, dark < 100
band 1
band 1, area, bright < 100
band 1, area, bright < 1000
LINES

# Places of other kinds: a rotated transform, control points, none; parts of them move along.
sed 's|<GeoTransform>.*</GeoTransform>|<GeoTransform>5, 0.5, 0.25, 60, 0.25, -0.5</GeoTransform>|' \
  <(gdal_translate -q -of VRT scene.tif /vsistdout/) >rotated.vrt
run rotated.vrt out.tif area 9 --srcwin 10 20 50 40
shows out.tif '15, 0.5, 0.25' '52.5, 0.25, -0.5'
gdal_translate -q -a_srs EPSG:4326 -gcp 0 0 10 50 -gcp 300 0 40 50 -gcp 0 211 10 20 "$picture" points.tif
run points.tif out.tif area 9 --srcwin 10 20 50 40
shows out.tif 'GCP[  1]' '(290,-20) -> (40,50,0)'
gdal_translate -q -srcwin 0 0 60 50 "$picture" nowhere.tif
run nowhere.tif out.tif area 9
gdalinfo out.tif >$view
! grep -q 'Origin\|Coordinate System' $view || fail "coordinates out of nowhere"

# No data: kept by value, by mask and by alpha, and marked in the output; without any, all pixels take part.
gdal_translate -q -a_nodata 12 scene.tif nodata.tif
gdal_translate -q -b 1 -b 2 -b 3 -mask 1 scene.tif masked.tif --config GDAL_TIFF_INTERNAL_MASK YES
gdal_translate -q -a_nodata 12 masked.tif both.tif --config GDAL_TIFF_INTERNAL_MASK YES
gdal_translate -q -b mask masked.tif mask.tif
run both.tif out.tif area 5000 --block 100 --overlap 5
shows out.tif 'NoData Value=12' 'Mask Flags: PER_DATASET'
gdal_calc.py --quiet --hideNoData -A both.tif --A_band=2 -B out.tif --B_band=4 -C out.tif --C_band=6 -M mask.tif \
  --calc='((A==12)|(M==0))*((B!=A)|(C!=A))' --type=Byte --outfile=lost.tif
[[ $(gdalinfo -mm lost.tif) == *'Min/Max=0.000,0.000'* ]] || fail "nodata was changed: $(gdalinfo -mm lost.tif)"
run masked.tif whole.tif area 500
gdal_translate -q -b 1 -b 2 -b 3 -b mask -mask none -co ALPHA=YES masked.tif alpha.tif
run alpha.tif out.tif area 500 --block 128
same whole.tif out.tif
gdal_translate -q -of VRT scene.tif half.vrt
sed -i 's|<VRTRasterBand.*|&<NoDataValue>0.5</NoDataValue>|' half.vrt  # no byte has this value
run half.vrt a.tif area 500
run scene.tif b.tif area 500
[[ $(gdalinfo -checksum a.tif | grep -o 'Checksum=.*') == $(gdalinfo -checksum b.tif | grep -o 'Checksum=.*') ]] ||
  fail "nodata 0.5"
[[ $(ls out*) == out.tif ]] || fail "files beside the output: $(ls out*)"

# Formats, by their names or by the extension: some that are written in parts, one of them a folder, and some that GDAL can
# only copy to.
run scene.tif out.tif area 100 -b 1
for format in ENVI COG PNG; do
  option=(-of "$format")
  [[ $format != PNG ]] || option=()
  run -b 1 scene.tif out.$format area 100 "${option[@]}"
  shows out.$format "$([[ $format == COG ]] && echo LAYOUT=COG || echo "Driver: $format/")"
  for plane in 1 2 3; do
    gdal_translate -q -b $plane out.tif a.tif
    gdal_translate -q -b $plane out.$format b.tif
    [[ $(gdalinfo -checksum a.tif | grep -o 'Checksum=.*') == $(gdalinfo -checksum b.tif | grep -o 'Checksum=.*') ]] ||
      fail "$format differs"
  done
done
[[ -e out.hdr ]] || fail "files of ENVI: $(ls -A)"
run -b 1 scene.tif out.zarr area 100 -of Zarr
gdal_translate -q 'ZARR:"out.zarr":/Band3' b.tif
[[ $(gdalinfo -checksum a.tif | grep -o 'Checksum=.*') == $(gdalinfo -checksum b.tif | grep -o 'Checksum=.*') ]] ||
  fail "Zarr differs"
refuses 1 'it is a folder' scene.tif out.zarr area 3 -of Zarr
run scene.tif a.tif area 100 -b 1 --co ZLEVEL=1  # more effort makes files little smaller, and takes twice as long
cmp out.tif a.tif
run scene.tif out.tif area 100 --co COMPRESS=LZW --co TILED=NO
shows out.tif 'COMPRESSION=LZW' 'Block=300x'

# The number of jobs changes no byte, however the file is stored, and -b may stand anywhere.
gdal_translate -q -outsize 1400 1100 -r bilinear scene.tif large.tif
gdal_translate -q -of VRT -mask 1 -b 2 -b 3 large.tif deep.vrt
for settings in 'area 100 900 --block 256' 'area 90 --block 256 -co COMPRESS=NONE' 'd 9 --block 256 --co TILED=NO' \
  'a 5000 --block 200 --memory 120' 'std 9 4 --co INTERLEAVE=PIXEL' 'area 9 100000 -b 2 --co BLOCKYSIZE=512' \
  'i 0.4 --inexact --block 512'; do
  for jobs in 1 2 5; do
    # shellcheck disable=SC2086  # words
    run -b 1 -j $jobs deep.vrt out.$jobs.tif $settings
    cmp out.1.tif out.$jobs.tif || fail "$jobs jobs differ: $settings"
  done
done
run deep.vrt out.1.tif area 90 --block 256 -b 1
run -b 1 deep.vrt out.2.tif area 90
same out.1.tif out.2.tif

# Without -j there are as many jobs as cores that the process may use: by its affinity, by the quota of a group around its own.
core=$(taskset -pc $$ | grep -o '[0-9]*' | tail -n 1)
cat >../in_group <<'IN'
mount -t tmpfs none /sys/fs/cgroup && mkdir -p /sys/fs/cgroup/a/b && echo 50000 100000 >/sys/fs/cgroup/a/cpu.max &&
  echo 0::/a/b >../group && mount --bind ../group /proc/$$/cgroup && exec "$@"
IN
has_one_job() {
  "$@" "$program" nowhere.tif out.tif area 3 >$printed && grep -q '; 1 job, ' $printed || fail "$*: $(cat $printed)"
}
has_one_job taskset -c "$core"
! unshare --mount bash ../in_group true 2>/dev/null || has_one_job unshare --mount bash ../in_group

# Parts are put together to the file that one run writes, to the byte: with control points and a mask; nodata that no double
# has; a file that says more of its bands, and signed bytes.
gdal_translate -q -ot Int64 -b 1 -b 2 -a_nodata 9007199254740993 scene.tif deep.tif
gdal_translate -q -of VRT -b 1 -mo TITLE=t scene.tif told.vrt
rpc=$(for key in {LINE,SAMP,LAT,LONG,HEIGHT}_{OFF,SCALE}; do printf '<MDI key="%s">90</MDI>' $key; done
  for key in {LINE,SAMP}_{NUM,DEN}_COEFF; do printf '<MDI key="%s">%s</MDI>' $key "$(printf '1 %.0s' {1..20})"; done)
band='<Description>NIR</Description><UnitType>m</UnitType><Metadata><MDI key="wavelength">842</MDI><MDI key="STATISTICS_MEAN">7</MDI></Metadata>'
band+='<Offset>5</Offset><Scale>2</Scale><CategoryNames><Category>sea</Category></CategoryNames>'
file='<Metadata domain="xml:XMP" format="xml"><x>xmp</x></Metadata>'
sed -i "s|<VRTRasterBand.*|<Metadata domain=\"RPC\">$rpc</Metadata>$file&$band|; s|<ColorInterp>Red|<ColorInterp>Palette|" told.vrt
for file in points.tif masked.tif deep.tif told.vrt signed.tif; do
  mkdir -p parts && touch parts/.hidden.tif
  size=$(gdalinfo $file | sed -n 's/^Size is \([0-9]*\), \([0-9]*\)$/\1 \2/p')
  cols=${size% *} rows=${size#* }
  k=0
  for window in "128 0 $((cols - 128)) $rows" "0 0 128 $((rows / 2))" "0 $((rows / 2)) 128 $((rows - rows / 2))"; do
    k=$((k + 1))
    # shellcheck disable=SC2086
    run $file parts/$k.tif area 9 400 --srcwin $window
  done
  run $file one.tif area 9 400 --block 256
  run $file joined.tif area 9 400 --block 256 --parts parts -j 2
  cmp one.tif joined.tif || fail "parts of $file"
done
run told.vrt out.tif area 9 --srcwin 30 20 100 100
shows out.tif 'NIR, area, dark < 9' 'wavelength=842' 'Unit Type: m' 'TITLE=t' '<x>xmp</x>' 'LINE_OFF=70' 'SAMP_OFF=60' \
  '0: sea' 'Offset: 5,   Scale:2'
! grep -q 'STATISTICS\|Palette' $view || fail "what does not hold of a profile: $(cat $view)"
run told.vrt out.tif s 3
gdalinfo out.tif >$view
! grep -q sea $view || fail "a difference has the category of a value"
shows one.tif 'PIXELTYPE=SIGNEDBYTE'
run deep.tif out.tif area 9
shows out.tif 'NoData Value=9007199254740993'

refuses 1 'is of another call: THRESHOLDS is 9 400, not 9 401' signed.tif new.tif area 9 401 --parts parts
gdal_translate -q -co PIXELTYPE=SIGNEDBYTE -scale 0 255 1 255 scene.tif other.signed.tif 2>/dev/null
refuses 1 'has been made of another scene' other.signed.tif new.tif area 9 400 --parts parts
for window in '0 105 130 106' '100 120 9 9'; do
  # shellcheck disable=SC2086
  run signed.tif parts/4.tif area 9 400 --srcwin $window
  refuses 1 overlap signed.tif new.tif area 9 400 --parts parts
done
rm parts/4.tif && mv parts/2.tif kept.tif
refuses 1 'parts are missing: 2 of them' signed.tif new.tif area 9 400 --parts parts
gdal_translate -q -srcwin 0 0 9 9 kept.tif parts/2.tif
refuses 1 'has not the size that it says' signed.tif new.tif area 9 400 --parts parts
gdal_translate -q -b 1 kept.tif parts/2.tif
refuses 1 'has 1 bands, not 15' signed.tif new.tif area 9 400 --parts parts
head -c 3000 kept.tif >parts/2.tif
refuses 1 "parts/2.tif" -q signed.tif new.tif area 9 400 --parts parts
cp one.tif parts/2.tif
refuses 1 'does not say its place' signed.tif new.tif area 9 400 --parts parts

# What is there is not overwritten: no input in any way, no device; a link is followed.
gdalbuildvrt -q inner.vrt scene.tif && gdalbuildvrt -q outer.vrt inner.vrt
cp scene.tif scene.msk.tif && cp scene.tif x.tif.ovr
mkfifo pipe && ln -s /dev/null null
for input in scene.tif outer.vrt GTIFF_DIR:1:scene.tif; do refuses 1 'it is read by the input' $input scene.tif area 3; done
refuses 1 'x.tif.ovr beside it is read by the input' x.tif.ovr x.tif area 3
for output in pipe null /dev/null; do refuses 1 'a device or a pipe' scene.tif $output area 3 -of GTiff; done
ln -s target.tif link.tif
run scene.tif link.tif area 3
[[ -L link.tif && -f target.tif && ! -L target.tif ]] || fail "link: $(ls -l)"
run scene.tif wide.tif area 3 --co TFW=YES
[[ -e wide.tfw ]] || fail "world file: $(ls -A)"

# Wrong usage, and requests that can not be met.
refuses 2 'see attribute-profile --help'
refuses 2 THRESHOLD scene.tif new.tif area
refuses 2 perimeter scene.tif new.tif perimeter 3
refuses 2 connectivity scene.tif new.tif area 3 --connectivity 6
refuses 2 rule scene.tif new.tif area 3 --rule median
refuses 2 3x scene.tif new.tif area 3x
refuses 1 'no band 4; it has 3' scene.tif new.tif area 3 -b 4
refuses 1 'not within the scene, which has 300 x 211' scene.tif new.tif area 3 --srcwin 200 0 101 10
refuses 1 'GDAL has no format WORD' scene.tif new.tif area 3 --of WORD
refuses 1 'no format has the extension' scene.tif new.word area 3
refuses 1 'has no pixels of its own' scene.tif new.vrt area 3 -of VRT
for number in -1 ' -1' nan inf 4294967296; do refuses 2 "$number" scene.tif new.tif area "$number"; done
gdalbuildvrt -q -separate mixed.vrt scene.tif deep.tif 2>/dev/null
refuses 1 'values of different types' mixed.vrt new.tif area 3
for option in '--memory 0' '--block abc' '--overlap 1e9' '-j 0' '--memory 99999999999999999999' \
  '-srcwin 9223372036854775807 0 1 1'; do
  # shellcheck disable=SC2086
  refuses 2 'no whole number' scene.tif new.tif area 3 $option
done
refuses 1 'give less --overlap' large.tif new.tif std 3 --inexact --block 1000 --overlap 400 --memory 170
"$program" scene.tif out.tif area 1.9 >$printed 2>$message
grep -q 'threshold 1.9 is used as 1' $message || fail "$(cat $message)"
refuses 1 'it is read by the input' scene.tif scene.tif area 3
refuses 1 "can't open missing.tif" missing.tif new.tif area 3
refuses 1 'no block can be sure' scene.tif new.tif inertia 0.3 --block 100
# What an error advises is enough, and no more than that.
for settings in 'area 3' 'area 3 --block 200' 'std 9 --rule max' 'i 0.5 --inexact --block 300'; do
  # shellcheck disable=SC2086
  ! "$program" -q large.tif new.tif $settings --memory 1 2>$message || fail "$settings in 1 MB"
  enough=$(grep -oE '(give|--memory) [0-9]+( or more|,|$)' $message | grep -oE '[0-9]+')
  # shellcheck disable=SC2086
  run large.tif out.tif $settings --memory "$enough"
  # shellcheck disable=SC2086
  ! "$program" -q large.tif out.tif $settings --memory $((enough - 1)) 2>$message || fail "$settings: $enough"
done
(ulimit -m 200000; refuses 1 'does not fit into 102 MB' large.tif new.tif std 3)  # half of what is free, in kB here
refuses 1 "threshold 50000 can't be proved for the block at column" scene.tif new.tif area 50000 --block 90 --memory 111
run nodata.tif whole.tif area 5 63300 99999 40
run nodata.tif blocks.tif area 5 63300 99999 40 --block 90 --memory 111
same whole.tif blocks.tif
mkdir inexact
run scene.tif inexact/1.tif inertia 0.3 --block 100 --inexact --srcwin 0 0 300 211
run scene.tif out.tif inertia 0.3 --parts inexact
shows out.tif EXACT=NO
"$program" --help >$printed && grep -q '^Example:' $printed
"$program" --version >$printed && grep -q '^attribute-profile [0-9.]*$' $printed
gdal_translate -q -ot Float32 -b 1 scene.tif float.tif
refuses 1 'values of type Float32, not integers' float.tif new.tif area 3
eval "$(grep -o 'gdal_translate.*' $message)" >/dev/null
run integers.tif out.tif area 3
rm integers.tif

# What goes wrong on the way leaves the old output, and nothing beside it.
run scene.tif out.tif area 7
cp out.tif old.tif
head -c 100000 scene.tif >broken.tif
refuses 1 "can't read broken.tif: " broken.tif out.tif area 3
refuses 1 "can't create nowhere/out.tif" scene.tif nowhere/out.tif area 3
mkdir folder
refuses 1 'it is a folder' scene.tif folder area 3
if ((EUID == 0)); then
  chmod 755 . && mkdir -m 555 closed && chmod 644 scene.tif
  ! setpriv --reuid=65534 --clear-groups "$program" scene.tif closed/out.tif area 3 2>$message || fail "wrote to closed"
  grep -q "can't create closed/out.tif.*Permission denied" $message || fail "closed: $(cat $message)"
  mkdir tiny
  if mount -t tmpfs -o size=200k none tiny 2>/dev/null; then
    cp nowhere.tif tiny/out.tif
    got=0
    "$program" -q scene.tif tiny/out.tif area 3 --co COMPRESS=NONE 2>$message || got=$?
    files=$(ls tiny)
    same tiny/out.tif nowhere.tif
    umount tiny
    [[ $got == 1 && $files == out.tif && $(wc -l <$message) == 1 ]] || fail "full disk: $got, $files, $(cat $message)"
  fi
fi
same out.tif old.tif

# Killed in the middle: the old file is still there; a run that ends well replaces it, and what told of it.
gdal_translate -q -outsize 3000 2000 -r bilinear scene.tif large.tif
for signal in HUP TERM KILL; do
  "$program" -q large.tif out.tif area 5000 --block 256 -j 3 2>$message &
  pid=$!
  until compgen -G '.out.tif.partial-*/files/*' >/dev/null; do sleep 0.01; done
  for ((k = 0; k < 500; ++k)); do
    threads=$(ls /proc/$pid/task | wc -l)
    ((threads < 6)) || break
    sleep 0.01
  done
  kill -$signal $pid
  ! wait $pid 2>/dev/null || fail "not killed"
  same out.tif old.tif
  ((threads >= 6)) || fail "$threads threads: not three that compute and three that compress"
  [[ $signal == KILL ]] || ! compgen -G '.out.tif*' >/dev/null || fail "left by $signal: $(ls -A)"
done
gdalinfo -stats out.tif >/dev/null && [[ -e out.tif.aux.xml ]]
run scene.tif out.tif area 8
[[ ! -e out.tif.aux.xml ]] || fail "statistics of the old file"
! compgen -G '.out.tif*' >/dev/null || fail "left by a run that was killed: $(ls -A)"

# Two runs of one output do not meet. One that is told to ignore hangups goes on.
(trap '' HUP && exec "$program" -q large.tif out.tif area 30 --block 256 2>../other) &
pid=$!
until compgen -G '.out.tif.partial-*/files/*' >/dev/null; do sleep 0.01; done
kill -STOP $pid
run scene.tif out.tif area 8
kill -HUP $pid && kill -CONT $pid
wait $pid && shows out.tif 'Size is 3000' || fail "the other run: $(cat ../other)"

# The progress bar is for terminals; the summary for all but the quiet.
"$program" large.tif out.tif area 500 --memory 1000 >$printed
grep -q '^6 blocks, [0-9.]*[1-9][0-9.]* % of the pixels read again, largest overlap [0-9]* pixels; [0-9]* jobs\?, .* a second$' $printed || fail "$(cat $printed)"
[[ $(wc -l <$printed) == 1 ]]
script -qec "'$program' scene.tif out.tif s 9 -b 1 -j 2" /dev/null >$printed
grep -q '^0...10...20.*100 - done' $printed && grep -q '^1 block, 0 %' $printed || fail "no progress bar: $(cat $printed)"

# The code of the user guide runs, and its file is as the guide shows it.
# shellcheck disable=SC2016  # the backquotes are the guide's
sed -n '/^```bash$/,/^```$/{/^```/!p}' "$guide" >../code
PATH=${program%/*}:$PATH bash -euo pipefail ../code >$view
diff <(sed -n '/^Band 1 Block/,/^```/{/^```/!p}' "$guide") <(sed -n '/^Band /,/bright < 1000/p' $view) || fail "not as in the guide"
