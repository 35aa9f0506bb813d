#!/usr/bin/env bash
# Draws every widget in every family, light and dark, into sheets to look at: docs/pictures/sheet-LANGUAGE.png and
# docs/pictures/sheet-titles.png. Another folder, another scale: docs/contact-sheet.sh FOLDER SCALE.
# Needs the release build and ImageMagick (montage).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=$PWD/build/release/bin
folder=${1:-docs/pictures}
scale=${2:-1}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset LC_ALL LC_TIME LC_MESSAGES LANGUAGE
export TZ=Europe/Berlin
now=2026-11-24T09:06:00+01:00
mkdir -p "$folder"

# in_home NAME COMMAND ...: with settings and accounts of its own.
in_home() {
    local home=$work/$1
    shift
    HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home/cache "$@"
}

# calendar HOME NAME COLOUR: reads "FROM TO TITLE" lines, minutes from now; a CALL in front adds a link, a
# TRAVEL half an hour on the way.
calendar() {
    local dir=$work/calendars/$1/$2 from to title number=0
    mkdir -p "$dir"
    echo "$3" >"$dir/color"
    echo "$2" >"$dir/displayname"
    while read -r from to title; do
        local extra=
        case $title in
        CALL*) extra=$'LOCATION:https://meet.jit.si/team\n' title=${title#CALL} title=${title# } ;;
        TRAVEL\ *) extra=$'X-APPLE-TRAVEL-DURATION;VALUE=DURATION:PT30M\n' title=${title#TRAVEL } ;;
        esac
        number=$((number + 1))
        printf 'BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//heedbanner sheet//EN\nBEGIN:VEVENT\nUID:%s-%s\nDTSTAMP:20260101T000000Z\nDTSTART:%s\nDTEND:%s\n%sSUMMARY:%s\nEND:VEVENT\nEND:VCALENDAR\n' \
            "$2" "$number" "$(moment "$from")" "$(moment "$to")" "$extra" "$title" >"$dir/$number.ics"
    done
}
moment() { date -u -d "$now $1 minutes" +%Y%m%dT%H%M%SZ; }

# set_up HOME: watches the home's calendars.
set_up() {
    in_home "$1" "$bin/heedbanner" setup "$work/calendars/$1" >/dev/null
    in_home "$1" "$bin/heedbanner" settings set timeOffsetSeconds 10m >/dev/null
    in_home "$1" "$bin/heedbanner" settings set includeTravelTime true >/dev/null
}

# draw HOME FILE WIDGET FAMILY OPTION ...
draw() {
    in_home "$1" "$bin/heedbanner-widgets" render "$3" --family "$4" --scale "$scale" --now "$now" "${@:5}" -o "$2.png"
}

# sheet FILE COLUMNS PICTURE ...
sheet() {
    montage "${@:3}" -background '#8E97A6' -geometry '+10+10' -gravity center -tile "$2x" -depth 8 \
        -define png:compression-level=9 -define png:exclude-chunks=date,time,tEXt "$1"
    echo "$1"
}

everything='countdown:small countdown:medium upcoming:small upcoming:medium current:small current:medium upcoming:large current:large'

calendar day Work '#3584E4' <<'END'
-21 39 CALL Board meeting
6 24 CALL Design review
84 129 Dentist, remember the insurance card
264 324 CALL Weekly planning
END
calendar day Home '#33B679' <<'END'
-3 55 Plumber is here
174 234 TRAVEL Piano lesson 🎹
END
calendar day Duty '#D50000' <<'END'
-126 594 On call
384 414 CALL Handover
-186 234 Road closed
END
set_up day
mkdir "$work/nothing-in-it"
for language in en_GB he_IL; do
    pictures=()
    for each in $everything; do
        for appearance in light dark; do
            picture=$work/$language-${each/:/-}-$appearance
            LANG=$language.UTF-8 draw day "$picture" "${each%:*}" "${each#*:}" --appearance "$appearance"
            pictures+=("$picture.png")
        done
    done
    for each in upcoming:small current:medium; do
        for appearance in light dark; do
            picture=$work/$language-nothing-${each/:/-}-$appearance
            LANG=$language.UTF-8 draw nothing "$picture" "${each%:*}" "${each#*:}" --appearance "$appearance" 2>/dev/null
            pictures+=("$picture.png")
        done
    done
    sheet "$folder/sheet-${language%_*}.png" 4 "${pictures[@]}"
done

export LANG=en_GB.UTF-8
calendar scripts Scripts '#8E24AA' <<'END'
30 60 CALL 設計レビュー：第二四半期の計画
31 61 اجتماع الفريق الأسبوعي مع العملاء
32 62 CALL פגישת צוות שבועית עם Anna
33 63 ประชุมทีมประจำสัปดาห์ ที่ชั้นสี่
34 64 साप्ताहिक टीम बैठक और योजना
35 65 👩‍👩‍👧‍👦 Family 🏳️‍🌈 brunch 🥐
END
calendar lengths Lengths '#F6BF26' <<END
30 60 CALL A title that goes on and on, well beyond the end of every row in which it could ever have to stand
31 61 $(printf 'Wort%.0s' {1..75})
32 62 CALL
33 63 one\\ntwo\\n\\nthree$(printf '\001\t')four
34 64 Meeting פגישה עם Anna at 14:30 (בזום)
1475 3100 CALL Over two nights
END
for home in scripts lengths; do set_up "$home"; done
pictures=()
for each in upcoming:large upcoming:medium upcoming:small countdown:small; do
    for home in scripts lengths; do
        for appearance in light dark; do
            contrast=normal
            [ "$each" != upcoming:medium ] || contrast=high
            picture=$work/$home-${each/:/-}-$appearance
            draw "$home" "$picture" "${each%:*}" "${each#*:}" --appearance "$appearance" --contrast "$contrast"
            pictures+=("$picture.png")
        done
    done
done
sheet "$folder/sheet-titles.png" 4 "${pictures[@]}"
