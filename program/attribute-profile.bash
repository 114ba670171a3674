# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# What bash completes of the program's command line. Options come from --help, so that none is missing.
_attribute_profile() {
  local cur prev words cword
  _init_completion || return

  local choices
  case $prev in
    --connectivity) choices='4 8' ;;
    --rule) choices='min max direct sub' ;;
    --jobs | -j) choices=all ;;
    --of) choices=$(gdalinfo --formats 2>/dev/null | awk '/-raster.*\(rw/ { print $1 }') ;;
    --parts) _filedir -d && return ;;
    --band | -b | --co | --memory | --block | --overlap | --srcwin) return ;;
    *)
      if [[ $cur == -* ]]; then
        choices=$(_parse_help "$1")
      elif [[ " ${words[*]:1:cword-1} " =~ \ (area|diagonal|inertia|std|[adis])\  ]]; then
        return  # thresholds are numbers
      else
        _filedir
        ((cword > 2)) && choices='area diagonal inertia std'
      fi
      ;;
  esac
  mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -W "$choices" -- "$cur")
} &&
  complete -F _attribute_profile attribute-profile
