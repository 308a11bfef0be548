;;; layomat.lsp -- the command LAYOMAT for CAD programs with AutoLISP.
;;;
;;; LAYOMAT starts the Layomat launcher (layomat.exe), which loads the
;;; add-in beside this CAD program. The launcher is looked for
;;;   1. beside this file (when this file is on the support path),
;;;   2. on the support path itself,
;;;   3. where the setup recorded it: "Launcher" under
;;;      HKEY_CURRENT_USER\Software\Layomat, then under
;;;      HKEY_LOCAL_MACHINE\Software\Layomat (read only where the program
;;;      offers vl-registry-read).
;;; Only portable functions are used, so that every family with AutoLISP
;;; loads this file unchanged.

;; The folder part of `path' with its trailing backslash ("" when none).
(defun layomat-folder (path / i found)
  (setq i (strlen path)
        found nil)
  (while (and (> i 0) (not found))
    (if (member (substr path i 1) '("\\" "/"))
      (setq found i)
      (setq i (1- i))))
  (if found (substr path 1 found) ""))

;; The value `name' of `key', or nil when the key, the value or
;; vl-registry-read is missing.
(defun layomat-registry (key name)
  (if vl-registry-read (vl-registry-read key name)))

;; The full path of an existing layomat.exe, or nil.
(defun layomat-launcher (/ here path)
  (setq here (findfile "layomat.lsp"))
  (cond
    ((and here
          (setq path (findfile (strcat (layomat-folder here) "layomat.exe"))))
     path)
    ((findfile "layomat.exe"))
    ((and (setq path (layomat-registry "HKEY_CURRENT_USER\\Software\\Layomat"
                                       "Launcher"))
          (findfile path)))
    ((and (setq path (layomat-registry "HKEY_LOCAL_MACHINE\\Software\\Layomat"
                                       "Launcher"))
          (findfile path)))))

(defun c:LAYOMAT (/ launcher)
  (if vl-load-com (vl-load-com))  ; makes vl-registry-read available
  (setq launcher (layomat-launcher))
  (cond
    ((null launcher)
     (princ "\nLayomat: layomat.exe was not found beside layomat.lsp, on the support path or where the setup records it. Install Layomat again or put layomat.exe beside layomat.lsp.")
    )
    ((null (startapp launcher))
     (princ (strcat "\nLayomat: could not start " launcher ".")))
    (t (princ "\nLayomat is starting...")))
  (princ))

(princ "\nLayomat loaded: type LAYOMAT to start it.")
(princ)
