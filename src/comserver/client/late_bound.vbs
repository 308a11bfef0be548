' Calls Layomats.LmtView late-bound from a script host, in the launcher's
' order, and prints "N passed, M failed" for the test runner.
Option Explicit

Dim passed, failed
passed = 0
failed = 0

Sub Check(ok, what)
  If ok Then
    passed = passed + 1
  Else
    failed = failed + 1
    WScript.Echo "FAILED: " & what
  End If
End Sub

Dim view, product, ini, width
Set view = CreateObject("Layomats.LmtView")
Check view.LmtStartDLL() = True, "LmtStartDLL returns True"
product = view.LmtGetProg()
Check Len(product) = 7, "LmtGetProg gives the product name"
ini = view.LmtPutFileINIform()
Check LCase(Right(ini, 25)) = "\layomat\formviewport.ini", "LmtPutFileINIform: " & ini
Check view.LmtStartProg() = True, "LmtStartProg returns True"
Check VarType(view.LmtParent()) = vbLong, "LmtParent gives a Long"
Check IsEmpty(view.LmtResize(12000, 9000)), "LmtResize gives Empty"
width = "15000"
Check IsEmpty(view.lmtresize(width, 9000)), "LmtResize takes a text number by reference"
Check view.FunctionCommands("") = True, "FunctionCommands returns True"
Check view.LmtExit(False) = True, "LmtExit(False) returns True"
Check view.LmtExit(1) = True, "LmtExit(1) returns True"
Check view.LmtGetProg() = product, "still answering after LmtExit(False) and LmtExit(1)"
Check view.LmtExit(True) = True, "LmtExit(True) returns True"
Set view = Nothing

WScript.Echo passed & " passed, " & failed & " failed"
